#pragma once

#include "platform/UserNotificationCenter.h"

#include <QSet>
#include <QVariantMap>

namespace brenvale {

/// The parts of a Notify call that depend on what the server can do (Desktop Notifications Specification 1.2,
/// https://specifications.freedesktop.org/notification-spec). Pure.
struct NotifyCall {
    QString body;
    QStringList actions; ///< identifiers and titles by turns
    QVariantMap hints;
};

/// The server's own field for an answer, where it has the capability of that name.
inline const QString inlineReplyAction = QStringLiteral("inline-reply");

/// `category` is that of the content, or null where it names none that is registered. A desktop that
/// `opensProgramByItself` does so at a click on a notification that has no action for that, as GNOME does.
[[nodiscard]] NotifyCall notifyCall(const NotificationContent& content, const NotificationCategory* category,
                                    const QSet<QString>& capabilities, bool opensProgramByItself = false);

} // namespace brenvale
