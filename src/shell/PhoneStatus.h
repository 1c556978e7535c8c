#pragma once

#include <QString>

#include <optional>

namespace brenvale {

/// What the settings tell of the phone. A plain value.
struct PhoneStatus {
    std::optional<QString> remoteIP;
    std::optional<QString> wifiName;
    std::optional<QString> deviceName;
    std::optional<qint64> batteryLevel; ///< percent
    bool isCharging = false;

    [[nodiscard]] bool isConnected() const { return remoteIP.has_value(); }

    /// The phone's Wi-Fi network, else its address.
    [[nodiscard]] QString networkText() const;

    /// "80%"; empty where the level is not known.
    [[nodiscard]] QString batteryText() const;
    [[nodiscard]] bool isBatteryLow() const;
};

} // namespace brenvale
