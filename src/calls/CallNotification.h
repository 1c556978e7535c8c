#pragma once

#include "platform/ActionNotification.h"
#include "platform/FloatingPanel.h"

#include <QObject>

#include <functional>
#include <memory>

namespace brenvale {

class ActiveCallBanner;
class IncomingCallBanner;

/// What stands for a call panel on a desktop where nothing can float: a notification with the panel's texts
/// and buttons. It has no clock, as a notification that changes each second comes up each second. On main.
class CallNotification final : public QObject, public FloatingPanel {
public:
    /// The banner must outlive it.
    CallNotification(IncomingCallBanner& banner, std::unique_ptr<ActionNotification> notification);
    CallNotification(ActiveCallBanner& banner, std::unique_ptr<ActionNotification> notification);

    void orderFrontRegardless() override;
    void orderOut() override;

private:
    std::unique_ptr<ActionNotification> notification_;
    std::function<ActionNotification::Content()> content_; ///< as of now
};

} // namespace brenvale
