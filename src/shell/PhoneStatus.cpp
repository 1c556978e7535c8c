#include "shell/PhoneStatus.h"

namespace brenvale {

QString PhoneStatus::networkText() const {
    return wifiName ? *wifiName : QStringLiteral("IP: ") + remoteIP.value_or(QStringLiteral("Unknown"));
}

QString PhoneStatus::batteryText() const {
    return batteryLevel ? QString::number(*batteryLevel) + u'%' : QString();
}

bool PhoneStatus::isBatteryLow() const {
    return batteryLevel && *batteryLevel < 20;
}

} // namespace brenvale
