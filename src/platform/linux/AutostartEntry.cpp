#include "platform/linux/AutostartEntry.h"

#include "platform/linux/KeyFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QSaveFile>
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
           " --background\n"
           "TryExec=" + // once the program is gone, the session passes the entry over
           entryString(program).toUtf8() +
           "\n"
           "Terminal=false\n"
           "X-GNOME-Autostart-enabled=true\n";
}

} // namespace

QString entryString(QString path) {
    return path.replace(u'\\', QStringLiteral("\\\\"))
        .replace(u'\n', QStringLiteral("\\n"))
        .replace(u'\t', QStringLiteral("\\t"));
}

QString execWord(const QString& path) {
    QString word = QStringLiteral("\"");
    for (const auto character : path) {
        if (QStringLiteral("\"`$\\").contains(character)) {
            word += u'\\';
        }
        if (character == u'%') {
            word += u'%';
        }
        word += character;
    }
    return entryString(word + u'"');
}

bool AutostartEntry::isEnabled() const {
    QFile file(entryPath());
    if (!file.open(QIODevice::ReadOnly)) {
        return false;
    }
    const auto text = file.readAll();
    const auto has = [&text](const QByteArray& key, const QByteArray& value) {
        return keyFileValue(text, "[Desktop Entry]", key) == value;
    };
    return keyFileValue(text, "[Desktop Entry]", "Exec") && !has("Hidden", "true") &&
           !has("X-GNOME-Autostart-enabled", "false") && !has("X-MATE-Autostart-enabled", "false");
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
