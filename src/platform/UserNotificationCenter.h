#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace brenvale {

/// What a desktop notification shows. Plain text everywhere; the back end escapes where its desktop needs it.
struct NotificationContent {
    QString title;
    QString subtitle;
    QString body;
    bool hasDefaultSound = false; ///< without it the notification is silent
    QString threadIdentifier;     ///< notifications of one thread are grouped
    QString categoryIdentifier;   ///< chooses the actions that are offered
};

/// A notification to show at once. A request whose identifier is still on show replaces that notification in
/// place.
struct NotificationRequest {
    QString identifier;
    NotificationContent content;
};

/// The desktop's notification service. Requests and removals take effect in the order of the calls.
/// Any thread; no call blocks, however slow the service is.
class UserNotificationCenter {
public:
    /// Gets the error's text, or nothing when the service took the request. Runs on main.
    using Completion = std::move_only_function<void(std::optional<QString> error)>;

    virtual ~UserNotificationCenter() = default;

    /// Shows `request`. `completion` may be empty.
    virtual void add(NotificationRequest request, Completion completion) = 0;

    /// Takes away those of the notifications that are on show.
    virtual void removeDelivered(const QStringList& identifiers) = 0;

    /// Drops those of the requests that the service has not been given yet. Their completions get no error.
    virtual void removePending(const QStringList& identifiers) = 0;
};

} // namespace brenvale
