#include "platform/linux/SettingsDefaults.h"

#include <QDir>
#include <QFileSystemWatcher>
#include <QSettings>
#include <QStandardPaths>

namespace brenvale {

namespace {

QString settingsFolder() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/brenvale");
}

QString settingsPath() {
    return settingsFolder() + QStringLiteral("/brenvale.conf");
}

} // namespace

SettingsDefaults::SettingsDefaults() = default;
SettingsDefaults::~SettingsDefaults() = default;

// A settings object of its own for each access is safe on any thread, and looks at the file again if it
// changed.

qint64 SettingsDefaults::integer(QStringView key) const {
    if (const auto value = unwritten(key)) {
        return *value;
    }
    const QSettings settings(settingsPath(), QSettings::IniFormat);
    return settings.value(key.toString()).toLongLong();
}

bool SettingsDefaults::contains(QStringView key) const {
    return unwritten(key) || QSettings(settingsPath(), QSettings::IniFormat).contains(key.toString());
}

void SettingsDefaults::setInteger(QStringView key, qint64 value) {
    QSettings settings(settingsPath(), QSettings::IniFormat);
    settings.setValue(key.toString(), value);
    settings.sync();
    {
        const std::scoped_lock lock(mutex_);
        if (settings.status() == QSettings::NoError) {
            unwritten_.remove(key.toString());
        } else {
            unwritten_.insert(key.toString(), value);
        }
    }
    change_.set({});
}

Subscription SettingsDefaults::observe(std::function<void()> observer) {
    if (!watcher_) {
        QDir().mkpath(settingsFolder()); // what is missing cannot be watched
        watcher_ = std::make_unique<QFileSystemWatcher>();
        const auto changed = [this] {
            watch();
            change_.set({});
        };
        QObject::connect(watcher_.get(), &QFileSystemWatcher::directoryChanged, watcher_.get(), changed);
        QObject::connect(watcher_.get(), &QFileSystemWatcher::fileChanged, watcher_.get(), changed);
        watch();
    }
    return change_.subscribe([observer = std::move(observer)](const auto&) { observer(); });
}

std::optional<qint64> SettingsDefaults::unwritten(QStringView key) const {
    const std::scoped_lock lock(mutex_);
    const auto value = unwritten_.constFind(key.toString());
    return value == unwritten_.constEnd() ? std::nullopt : std::optional(*value);
}

void SettingsDefaults::watch() {
    // A file that is written anew by replacing it has left the watch.
    for (const auto& path : {settingsFolder(), settingsPath()}) {
        if (QFileInfo::exists(path) && !watcher_->files().contains(path) &&
            !watcher_->directories().contains(path)) {
            watcher_->addPath(path);
        }
    }
}

} // namespace brenvale
