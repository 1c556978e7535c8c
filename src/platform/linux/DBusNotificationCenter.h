#pragma once

#include "platform/UserNotificationCenter.h"
#include "platform/linux/NotificationAuthorization.h"
#include "platform/linux/NotificationQueue.h"
#include "platform/linux/NotificationReplies.h"
#include "platform/linux/NotificationStates.h"
#include "platform/linux/ShownNotifications.h"

#include <QObject>
#include <QSet>

#include <chrono>
#include <map>

class QDBusMessage;

namespace brenvale {

class ChildPrograms;
class DispatchQueue;

/// Desktop notifications through org.freedesktop.Notifications on the session bus (Desktop Notifications
/// Specification 1.2). Calls go out in order without waiting for each other, but one that concerns a
/// notification whose call is still under way waits, and what is behind it too: only the answer tells the
/// server's number, by which a notification is replaced or closed. Without a bus or a server each request
/// ends in an error. Made on main, where all of its state lives.
class DBusNotificationCenter final : public QObject, public UserNotificationCenter {
    Q_OBJECT

public:
    /// Both must outlive it.
    DBusNotificationCenter(DispatchQueue& main, const ChildPrograms& programs);
    ~DBusNotificationCenter() override;

    void setDelegate(UserNotificationCenterDelegate* delegate) override;
    void setNotificationCategories(QList<NotificationCategory> categories) override;
    void getNotificationSettings(SettingsAnswer answer) override;
    void requestAuthorization(AuthorizationAnswer answer) override;
    void add(NotificationRequest request, Completion completion) override;
    void removeDelivered(const QList<RequestIdentifier>& identifiers) override;
    void removePending(const QList<RequestIdentifier>& identifiers) override;

private slots:
    void notificationClosed(uint serverId, uint reason);

private:
    using Show = NotificationQueue::Show;
    using Close = NotificationQueue::Close;

    void enqueue(Show show);
    void takeNext();
    [[nodiscard]] bool canTakeNext() const;
    [[nodiscard]] bool standsStill() const;
    [[nodiscard]] bool changesSomething(const Close& close) const;
    void askCapabilities();
    void capabilitiesAnswered(const QDBusMessage& answer);
    void show(Show show);
    void showAnswered(Show show, uint server, const QDBusMessage& answer);
    [[nodiscard]] RequestEvent eventOf(const Show& show, uint server, const QDBusMessage& answer) const;
    void showLater(Show show);
    void close(const Close& close);
    void ownerChanged();
    void call(const QDBusMessage& message, std::move_only_function<void(const QDBusMessage&)> answered);
    [[nodiscard]] QDBusMessage notifyMessage(const NotificationRequest& request) const;

    DispatchQueue& main_;
    NotificationQueue waiting_;
    QSet<RequestIdentifier> calling_; ///< requests that the server has not answered yet
    std::map<quint64, Show> pausing_; ///< requests that go out again in a moment, by their place
    qsizetype underWay_ = 0;          ///< calls that the server has not answered yet
    std::chrono::steady_clock::time_point heardFrom_; ///< when it answered, or the first of them began
    uint server_ = 0;                                 ///< counts the servers that came and went
    ServerState serverState_ = ServerState::unknown;
    QSet<QString> capabilities_; ///< of the server that is known
    ShownNotifications shown_;
    NotificationReplies replies_{shown_};
    NotificationAuthorization authorization_;
};

} // namespace brenvale
