#pragma once

#include "platform/SystemSleep.h"

#include <QObject>

namespace brenvale {

/// The sleep of the computer as systemd-logind announces it (org.freedesktop.login1); where there is none, it
/// wakes up unnoticed. Made on main.
class LogindSleep final : public QObject, public SystemSleep {
    Q_OBJECT

public:
    LogindSleep();

private slots:
    void prepareForSleep(bool isAhead) const;
};

} // namespace brenvale
