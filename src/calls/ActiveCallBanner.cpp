#include "calls/ActiveCallBanner.h"

#include "link/WebSocketServer.h"

namespace brenvale {

ActiveCallBanner::ActiveCallBanner(const PreparedCall& call, InternalNotifications& notifications,
                                   WebSocketServer& server)
    : text_(activeCallerText(call.name, call.number)),
      server_(server),
      observation_(notifications.addObserver(InternalNotifications::callDurationUpdated,
                                             [this](const auto& object) { durationUpdated(object); })) {}

QString ActiveCallBanner::thirdLine() const {
    return duration_ >= 0 ? formatDuration(duration_) : QStringLiteral("Connecting...");
}

void ActiveCallBanner::toggleMute() {
    isMuted_ = !isMuted_;
    server_.toggleMute(isMuted_);
    emit isMutedChanged();
}

void ActiveCallBanner::hangUp() const {
    server_.hangupCall();
}

void ActiveCallBanner::durationUpdated(const InternalNotifications::Object& object) {
    const auto* seconds = std::get_if<qint64>(&object);
    if (seconds != nullptr && *seconds >= 0) {
        duration_ = *seconds;
        emit durationChanged();
    }
}

} // namespace brenvale
