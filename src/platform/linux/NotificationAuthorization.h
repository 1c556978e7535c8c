#pragma once

#include "platform/UserNotificationCenter.h"

#include <QObject>

namespace brenvale {

/// Whether notifications can be shown: there is a notification server, or the bus can start one, and the
/// desktop's switch for this program is on. Made on main, where all of it runs and answers.
class NotificationAuthorization final : public QObject {
    Q_OBJECT

public:
    using SettingsAnswer = UserNotificationCenter::SettingsAnswer;
    using AuthorizationAnswer = UserNotificationCenter::AuthorizationAnswer;

    void readStatus(SettingsAnswer answer);

    /// Nobody is asked here: a session that is still starting gets ten seconds to bring its server up, and
    /// it is granted when that comes.
    void request(AuthorizationAnswer answer);

private:
    void askForServer(std::function<void(bool isThere)> answer);
};

} // namespace brenvale
