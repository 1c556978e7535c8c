#pragma once

#include "platform/Alerts.h"

namespace brenvale {

/// Alerts as windows of the desktop's look.
class QtAlerts final : public Alerts {
public:
    void runModal(const Alert& alert, Answer answer) override;
};

} // namespace brenvale
