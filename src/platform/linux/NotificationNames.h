#pragma once

#include <QString>

namespace brenvale {

// How the notification server is reached (Desktop Notifications Specification, freedesktop.org); the
// interface has the service's name.
inline const QString notificationService = QStringLiteral("org.freedesktop.Notifications");
inline const QString notificationPath = QStringLiteral("/org/freedesktop/Notifications");

} // namespace brenvale
