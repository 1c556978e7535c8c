#pragma once

#include "platform/ActionNotification.h"

#include <QObject>
#include <QSet>

#include <optional>

class QDBusMessage;
class QDBusPendingCallWatcher;

namespace brenvale {

/// A notification of critical urgency by the desktop's notification server (Desktop Notifications
/// Specification 1.2). Where there is no server nothing is shown. On main.
class DBusActionNotification final : public QObject, public ActionNotification {
    Q_OBJECT

public:
    DBusActionNotification();
    ~DBusActionNotification() override;
    DBusActionNotification(const DBusActionNotification&) = delete;
    DBusActionNotification& operator=(const DBusActionNotification&) = delete;

    void show(const Content& content) override;
    void close() override;

private slots:
    void actionInvoked(uint serverId, const QString& action);
    void notificationClosed(uint serverId, uint reason);

private:
    void takeNext();
    void askCapabilities();
    void notify(const Content& content, const QSet<QString>& capabilities);
    static void closeNotification(uint serverId);

    std::optional<Content> waiting_;            ///< to be shown when the call under way is answered
    std::optional<QSet<QString>> capabilities_; ///< once the server has told them
    uint serverId_ = 0;                         ///< 0 while it is not on show
    bool isCalling_ = false;
    bool isWanted_ = false; ///< shown, and not closed since
};

} // namespace brenvale
