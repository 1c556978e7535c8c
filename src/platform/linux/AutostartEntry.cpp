#include "platform/linux/AutostartEntry.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QSaveFile>
#include <QSettings>
#include <QStandardPaths>

#include <cerrno>

namespace brenvale {

namespace {

QString entryPath() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/autostart/org.brenvale.Brenvale.desktop");
}

QByteArray entryText(const QString& program) {
    return "[Desktop Entry]\n"
           "Type=Application\n"
           "Name=Brenvale\n"
           "Comment=Notifications, messages and files of your phone\n"
           "Icon=org.brenvale.Brenvale\n"
           "Exec=" +
           execWord(program).toUtf8() +
           "\n"
           "Terminal=false\n"
           "X-GNOME-Autostart-enabled=true\n";
}

} // namespace

QString execWord(const QString& path) {
    QString word = QStringLiteral("\"");
    for (const auto character : path) {
        if (QStringLiteral("\"`$\\").contains(character)) {
            word += character == u'\\' ? QStringLiteral("\\\\\\") : QStringLiteral("\\\\");
        }
        if (character == u'%') {
            word += u'%';
        }
        word += character;
    }
    return word + u'"';
}

bool AutostartEntry::isEnabled() const {
    const auto path = entryPath();
    if (!QFileInfo::exists(path)) {
        return false;
    }
    const QSettings entry(path, QSettings::IniFormat);
    return !entry.value(QStringLiteral("Desktop Entry/Hidden"), false).toBool() &&
           entry.value(QStringLiteral("Desktop Entry/X-GNOME-Autostart-enabled"), true).toBool();
}

std::expected<void, QString> AutostartEntry::registerItem() {
    const auto path = entryPath();
    errno = 0;
    if (!QDir().mkpath(QFileInfo(path).path())) {
        return std::unexpected(qt_error_string(errno));
    }
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        return std::unexpected(file.errorString());
    }
    file.write(entryText(QCoreApplication::applicationFilePath()));
    if (!file.commit()) {
        return std::unexpected(file.errorString());
    }
    return {};
}

std::expected<void, QString> AutostartEntry::unregisterItem() {
    if (!isEnabled()) {
        return std::unexpected(qt_error_string(ENOENT));
    }
    QFile file(entryPath());
    if (!file.remove()) {
        return std::unexpected(file.errorString());
    }
    return {};
}

} // namespace brenvale
