#include "platform/linux/LogindSleep.h"

#include <QDBusConnection>

namespace brenvale {

LogindSleep::LogindSleep() {
    auto bus = QDBusConnection::systemBus();
    if (bus.isConnected()) {
        bus.connect(QStringLiteral("org.freedesktop.login1"), QStringLiteral("/org/freedesktop/login1"),
                    QStringLiteral("org.freedesktop.login1.Manager"), QStringLiteral("PrepareForSleep"), this,
                    SLOT(prepareForSleep(bool)));
    }
}

void LogindSleep::prepareForSleep(bool isAhead) const {
    if (!isAhead && didWake) {
        didWake();
    }
}

} // namespace brenvale
