#include "platform/linux/SettingsDefaults.h"

#include <QSettings>
#include <QStandardPaths>

#include <charconv>
#include <limits>

namespace brenvale {

namespace {

qint64 nearestInteger(const QString& text) {
    bool isInteger = false;
    const auto integer = text.toLongLong(&isInteger);
    if (isInteger) {
        return integer;
    }
    const auto bytes = text.toLatin1();
    qint64 ignored = 0;
    const auto [end, error] = std::from_chars(bytes.begin(), bytes.end(), ignored);
    if (error != std::errc::result_out_of_range || end != bytes.end()) {
        return 0;
    }
    using Limits = std::numeric_limits<qint64>;
    return bytes.startsWith('-') ? Limits::min() : Limits::max();
}

} // namespace

qint64 SettingsDefaults::integer(QStringView key) const {
    // A settings object of its own for each read is safe on any thread, and looks at the file again if it
    // changed.
    const auto folder = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    const QSettings settings(folder + QStringLiteral("/brenvale/brenvale.conf"), QSettings::IniFormat);
    return nearestInteger(settings.value(key.toString()).toString());
}

} // namespace brenvale
