#pragma once

#include "platform/EventPoster.h"

namespace brenvale {

/// Where the desktop has no way to post events: none can be made.
class AbsentEventPoster final : public EventPoster {
public:
    [[nodiscard]] bool canMakeEvents() const override { return false; }
    [[nodiscard]] QPointF pointerLocation() const override { return {}; }
    void post(const KeyEvent& /*event*/) override {}
    void post(const SystemDefinedEvent& /*event*/) override {}
    void post(const MouseEvent& /*event*/) override {}
};

} // namespace brenvale
