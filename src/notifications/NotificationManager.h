#pragma once

#include "notifications/RecentBodies.h"
#include "platform/UserNotificationCenter.h"

#include <QString>

namespace brenvale {

class Clock;
class Log;
struct NotifPayload;

/// The only way to a desktop notification: forwarded ones with their de-duplication, and the program's own.
/// None of the operations reports a failure to its caller.
class NotificationManager {
public:
    NotificationManager(UserNotificationCenter& center, const Clock& clock, Log& log);

    /// Shows a notification of the phone. Of two with one body within three seconds the later takes the
    /// earlier one's place, unless its title is a phone number: then it is dropped. Its request identifier is
    /// the phone's key, else app, title and body joined. On main.
    void post(const NotifPayload& payload);

    /// Shows a message of the program itself, which no later one replaces. Any thread.
    void postSimple(const QString& title, const QString& body);

    /// Shows how far an incoming file is; one `identifier` is one notification, with sound only when
    /// `progress` reaches 1. A `progress` that is no finite fraction is fatal. Any thread.
    void postFileProgress(const QString& fileName, double progress, const QString& identifier);

private:
    [[nodiscard]] static NotificationContent content(const NotifPayload& payload);

    UserNotificationCenter& center_;
    const Clock& clock_;
    Log& log_;
    RecentBodies recentBodies_; ///< main only
};

} // namespace brenvale
