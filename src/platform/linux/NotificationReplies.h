#pragma once

#include "platform/UserNotificationCenter.h"
#include "platform/linux/ReplyWindow.h"
#include "platform/linux/ShownNotifications.h"

#include <QHash>
#include <QObject>
#include <QPointer>

namespace brenvale {

/// The way of an answer from the notification server to the delegate: typed into the notification where the
/// server has a field for it, else into a window of our own that the notification's action opens. Made on
/// main, where all of it runs.
class NotificationReplies final : public QObject {
    Q_OBJECT

public:
    /// `shown` must outlive it.
    explicit NotificationReplies(const ShownNotifications& shown);

    void setDelegate(UserNotificationCenterDelegate* delegate) { delegate_ = delegate; }
    void setCategories(QList<NotificationCategory> categories) { categories_ = std::move(categories); }

    /// The registered category of that name, or null.
    [[nodiscard]] const NotificationCategory* category(const QString& identifier) const;

private slots:
    // The server's signals.
    void actionInvoked(uint serverId, const QString& action);
    void notificationReplied(uint serverId, const QString& text);
    void activationToken(uint serverId, const QString& token);

private:
    void openReplyWindow(const ShownNotifications::Notification& notification,
                         const TextInputNotificationAction& action);
    void reply(const RequestIdentifier& identifier, const TextInputNotificationAction& action,
               const QString& text);

    const ShownNotifications& shown_;
    UserNotificationCenterDelegate* delegate_ = nullptr;
    QList<NotificationCategory> categories_;
    QHash<RequestIdentifier, QPointer<ReplyWindow>> windows_; ///< those that are open, by the request
    QString activationToken_; ///< for the next window: the right to take the focus
};

} // namespace brenvale
