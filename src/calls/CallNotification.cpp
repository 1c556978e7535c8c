#include "calls/CallNotification.h"

#include "calls/ActiveCallBanner.h"
#include "calls/IncomingCallBanner.h"

#include <utility>

namespace brenvale {

namespace {

const QString accept = QStringLiteral("Accept");
const QString decline = QStringLiteral("Decline");
const QString mute = QStringLiteral("Mute");
const QString unmute = QStringLiteral("Unmute");
const QString endCall = QStringLiteral("End call");

QString bodyOf(const QString& secondLine, const QString& state) {
    return secondLine.isEmpty() ? state : secondLine + u'\n' + state;
}

} // namespace

CallNotification::CallNotification(IncomingCallBanner& banner,
                                   std::unique_ptr<ActionNotification> notification)
    : notification_(std::move(notification)), content_([&banner] {
          return ActionNotification::Content{.title = banner.firstLine(),
                                             .body =
                                                 bodyOf(banner.secondLine(), QStringLiteral("Incoming Call")),
                                             .actions = {decline, accept}};
      }) {
    notification_->pressed = [&banner](const QString& action) {
        if (action == accept) {
            banner.answer();
        } else if (action == decline) {
            banner.hangUp();
        }
    };
}

CallNotification::CallNotification(ActiveCallBanner& banner, std::unique_ptr<ActionNotification> notification)
    : notification_(std::move(notification)), content_([&banner] {
          return ActionNotification::Content{.title = banner.firstLine(),
                                             .body = bodyOf(banner.secondLine(), QStringLiteral("Call")),
                                             .actions = {banner.isMuted() ? unmute : mute, endCall}};
      }) {
    notification_->pressed = [&banner](const QString& action) {
        if (action == endCall) {
            banner.hangUp();
        } else if (action == (banner.isMuted() ? unmute : mute)) {
            banner.toggleMute();
        }
    };
    connect(&banner, &ActiveCallBanner::isMutedChanged, this, &CallNotification::orderFrontRegardless);
}

void CallNotification::orderFrontRegardless() {
    notification_->show(content_());
}

void CallNotification::orderOut() {
    notification_->close();
}

} // namespace brenvale
