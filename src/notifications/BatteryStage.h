#pragma once

#include <QString>

#include <optional>

namespace brenvale {

/// The stages at which a falling battery is announced, each once until a charger is plugged in. Pure.

/// The stage that a report of `level` percent fires: the highest one not below the level and, where one has
/// fired already, below that one.
[[nodiscard]] std::optional<qint64> nextBatteryStage(qint64 level, std::optional<qint64> lastStage);

/// Title and body of the notification of a stage. The title tells the level reported, not the stage.
[[nodiscard]] QString batteryAlertTitle(qint64 stage, const QString& deviceName, qint64 level);
[[nodiscard]] QString batteryAlertBody(qint64 stage);

} // namespace brenvale
