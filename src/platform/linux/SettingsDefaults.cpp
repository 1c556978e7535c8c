#include "platform/linux/SettingsDefaults.h"

#include <QSettings>
#include <QStandardPaths>

namespace brenvale {

qint64 SettingsDefaults::integer(QStringView key) const {
    // A settings object of its own for each read is safe on any thread, and looks at the file again if it
    // changed.
    const auto folder = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    const QSettings settings(folder + QStringLiteral("/brenvale/brenvale.conf"), QSettings::IniFormat);
    return settings.value(key.toString()).toLongLong();
}

} // namespace brenvale
