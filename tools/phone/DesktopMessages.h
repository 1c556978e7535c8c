#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>

#include <optional>

namespace brenvale::phone {

/// The object in a message of the desktop; nothing where it is broken, as a command can be whose text has a
/// quote.
std::optional<QJsonObject> desktopMessage(const QByteArray& bytes);

/// A message of the desktop in one line for people. One that the phone does not know is shown as it came.
QString describedDesktopMessage(const QByteArray& bytes);

} // namespace brenvale::phone
