#include "platform/linux/SettingsDefaults.h"

#include "transfer/LocalFile.h"

#include <QDir>
#include <QFile>
#include <QFileSystemWatcher>
#include <QSettings>
#include <QStandardPaths>

#include <cerrno>
#include <charconv>
#include <limits>

#include <sys/stat.h>

namespace brenvale {

namespace {

QString settingsFolder() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/brenvale");
}

QString settingsPath() {
    return settingsFolder() + QStringLiteral("/brenvale.conf");
}

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

/// What stands in the file; nothing where there is none. That it can't be looked at is no reason to take it
/// for missing.
std::expected<QByteArray, QString> textOfFile() {
    struct stat status{};
    if (::lstat(QFile::encodeName(settingsPath()).constData(), &status) != 0 && errno == ENOENT) {
        return QByteArray();
    }
    const auto file = openFile(settingsPath());
    return file ? std::expected<QByteArray, QString>((*file)->readAll())
                : std::unexpected(QStringLiteral("the settings file cannot be read"));
}

std::expected<SettingsSections, QString> readFile() {
    const auto text = textOfFile();
    return text ? parseSettings(*text) : std::unexpected(text.error());
}

/// Whether the file took it. One that Qt doesn't understand as a person does would lose what was not
/// understood.
bool write(const QString& key, qint64 value) {
    if (!readFile()) {
        return false;
    }
    QSettings settings(settingsPath(), QSettings::IniFormat);
    settings.setValue(key, value);
    settings.sync();
    return settings.status() == QSettings::NoError;
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
    if (isNoFile(settingsPath())) {
        return 0;
    }
    const QSettings settings(settingsPath(), QSettings::IniFormat);
    return nearestInteger(settings.value(key.toString()).toString());
}

bool SettingsDefaults::contains(QStringView key) const {
    return unwritten(key) || (!isNoFile(settingsPath()) &&
                              QSettings(settingsPath(), QSettings::IniFormat).contains(key.toString()));
}

std::expected<SettingsSections, QString> SettingsDefaults::sections() const {
    return readFile();
}

void SettingsDefaults::setInteger(QStringView key, qint64 value) {
    const bool isWritten = write(key.toString(), value);
    {
        const std::scoped_lock lock(mutex_);
        if (isWritten) {
            unwritten_.remove(key.toString());
        } else {
            unwritten_.insert(key.toString(), value);
        }
    }
    seenText_.reset();
    change_.set({});
}

Subscription SettingsDefaults::observe(std::function<void()> observer) {
    if (!watcher_) {
        QDir().mkpath(settingsFolder()); // what is missing cannot be watched
        watcher_ = std::make_unique<QFileSystemWatcher>();
        // On a full disk the toolkit tries again, in vain, at each reading, and that changes the folder: who
        // was told of that would read for ever.
        const auto changed = [this] {
            watch();
            if (auto text = textOfFile().value_or(QByteArray()); text != seenText_) {
                seenText_ = std::move(text);
                change_.set({});
            }
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
