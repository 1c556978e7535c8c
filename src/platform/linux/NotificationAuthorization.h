#pragma once

#include "platform/UserNotificationCenter.h"

#include <QObject>

namespace brenvale {

class ChildPrograms;

/// Whether notifications can be shown: there is a notification server, or the bus can start one, and the
/// desktop's switch for this program is on. Made on main, where all of it runs and answers.
class NotificationAuthorization final : public QObject {
    Q_OBJECT

public:
    /// `programs` must outlive it.
    explicit NotificationAuthorization(const ChildPrograms& programs) : programs_(programs) {}

    using SettingsAnswer = UserNotificationCenter::SettingsAnswer;
    using AuthorizationAnswer = UserNotificationCenter::AuthorizationAnswer;

    void readStatus(SettingsAnswer answer);

    /// Nobody is asked here: a session that is still starting gets ten seconds to bring its server up, and
    /// it is granted when that comes.
    void request(AuthorizationAnswer answer);

private:
    void askForServer(std::function<void(bool isThere)> answer);

    const ChildPrograms& programs_;
};

} // namespace brenvale
