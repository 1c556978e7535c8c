#pragma once

#include <QByteArray>
#include <QString>

namespace brenvale {

/// The messages to the phone as they go on the wire. Pure.

/// What each phone is told first: {"action":"connected"} with the computer's name as "deviceName".
[[nodiscard]] QByteArray connectedGreeting(const QString& deviceName);

} // namespace brenvale
