#pragma once

#include "platform/UserNotificationCenter.h"
#include "platform/linux/NotificationAuthorization.h"
#include "platform/linux/NotificationReplies.h"
#include "platform/linux/ShownNotifications.h"

#include <QObject>
#include <QSet>

#include <deque>
#include <optional>
#include <variant>

class QDBusMessage;
class QDBusPendingCallWatcher;

namespace brenvale {

class DispatchQueue;

/// Desktop notifications through org.freedesktop.Notifications on the session bus (Desktop Notifications
/// Specification 1.2). Calls go out in order without waiting for each other, but one that concerns a
/// notification whose call is still under way waits, and what is behind it too: only the answer tells the
/// server's number, by which a notification is replaced or closed. Without a bus or a server each request
/// ends in an error. Made on main, where all of its state lives.
class DBusNotificationCenter final : public QObject, public UserNotificationCenter {
    Q_OBJECT

public:
    explicit DBusNotificationCenter(DispatchQueue& main);
    ~DBusNotificationCenter() override;

    void setDelegate(UserNotificationCenterDelegate* delegate) override;
    void setNotificationCategories(QList<NotificationCategory> categories) override;
    void getNotificationSettings(SettingsAnswer answer) override;
    void requestAuthorization(AuthorizationAnswer answer) override;
    void add(NotificationRequest request, Completion completion) override;
    void removeDelivered(const QStringList& identifiers) override;
    void removePending(const QStringList& identifiers) override;

private slots:
    void notificationClosed(uint serverId, uint reason);

private:
    struct Show {
        NotificationRequest request;
        Completion completion;
        bool isSecondTry = false;

        void complete(const std::optional<QString>& error);
    };
    struct Close {
        QString identifier;
    };
    using Step = std::variant<Show, Close>;

    void enqueue(Show show);
    void takeNext();
    [[nodiscard]] bool canTake(const Step& step) const;
    void failWaiting(const QString& error);
    void readCapabilities();
    void show(Show show);
    void showAnswered(Show show, uint generation, const QDBusMessage& answer);
    void showLater(Show show);
    void close(const Close& close);
    void serverChanged();
    void call(const QDBusMessage& message, std::move_only_function<void(const QDBusMessage&)> answered);
    [[nodiscard]] QDBusMessage notifyMessage(const NotificationRequest& request) const;

    DispatchQueue& main_;
    std::deque<Step> waiting_;
    QSet<QString> calling_;      ///< identifiers of the requests that the server has not answered yet
    std::ptrdiff_t retries_ = 0; ///< requests at the head that go out a second time
    bool isAskingCapabilities_ = false;
    bool areCapabilitiesGuessed_ = false;       ///< nobody answered: they serve one request alone
    uint generation_ = 0;                       ///< counts the servers that came and went
    std::optional<QSet<QString>> capabilities_; ///< of the present server, once it has told
    ShownNotifications shown_;
    NotificationReplies replies_{shown_};
    NotificationAuthorization authorization_;
};

} // namespace brenvale
