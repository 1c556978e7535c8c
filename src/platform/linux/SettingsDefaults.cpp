#include "platform/linux/SettingsDefaults.h"

#include <QDir>
#include <QFile>
#include <QFileSystemWatcher>
#include <QSettings>
#include <QStandardPaths>

#include <algorithm>
#include <charconv>
#include <limits>

namespace brenvale {

namespace {

QString settingsFolder() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/brenvale");
}

QString settingsPath() {
    return settingsFolder() + QStringLiteral("/brenvale.conf");
}

/// Whether something else than a file stands in its place. A FIFO would hold up whoever opens it.
bool isNoFile() {
    const QFileInfo info(settingsPath());
    return info.exists() && !info.isFile();
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

/// Whether a line of an INI file is none. A remark may stand behind '#', which Qt takes for a broken line.
bool isBrokenLine(const QByteArray& line) {
    const auto text = line.trimmed();
    const bool isRemark = text.startsWith(';') || text.startsWith('#');
    return !text.isEmpty() && !isRemark && !text.contains(text.startsWith('[') ? ']' : '=');
}

/// Why the settings cannot be relied upon; empty where they can. Qt tells it once only, to whoever reads the
/// file first, and from then on gives what it understood.
QString problemOfFile() {
    if (isNoFile()) {
        return QStringLiteral("the settings file is no file");
    }
    QFile file(settingsPath());
    if (!file.exists()) {
        return {};
    }
    if (!file.open(QFile::ReadOnly)) {
        return QStringLiteral("the settings file cannot be read");
    }
    const auto lines = file.readAll().split('\n');
    return std::ranges::any_of(lines, isBrokenLine)
               ? QStringLiteral("the settings file has a line that cannot be read")
               : QString();
}

/// Whether the file took it.
bool write(const QString& key, qint64 value) {
    if (isNoFile()) {
        return false;
    }
    QSettings settings(settingsPath(), QSettings::IniFormat);
    settings.setValue(key, value);
    settings.sync();
    return settings.status() == QSettings::NoError;
}

/// As it is written, also where commas make a list of it; nothing where it is no text.
std::optional<QString> textOf(const QVariant& value) {
    const bool isText = value.typeId() == QMetaType::QString || value.typeId() == QMetaType::QStringList;
    return isText ? std::optional(value.toStringList().join(u',')) : std::nullopt;
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
    if (isNoFile()) {
        return 0;
    }
    const QSettings settings(settingsPath(), QSettings::IniFormat);
    return nearestInteger(settings.value(key.toString()).toString());
}

bool SettingsDefaults::contains(QStringView key) const {
    return unwritten(key) ||
           (!isNoFile() && QSettings(settingsPath(), QSettings::IniFormat).contains(key.toString()));
}

std::expected<QMultiMap<QString, QString>, QString> SettingsDefaults::section(QStringView name) const {
    if (const auto problem = problemOfFile(); !problem.isEmpty()) {
        return std::unexpected(problem);
    }
    const QSettings settings(settingsPath(), QSettings::IniFormat);
    QMultiMap<QString, QString> values;
    for (const auto& path : settings.allKeys()) {
        const auto slash = path.indexOf(u'/');
        if (slash < 0 || QStringView(path).left(slash).compare(name, Qt::CaseInsensitive) != 0) {
            continue;
        }
        const auto value = textOf(settings.value(path));
        if (!value) {
            return std::unexpected(QStringLiteral("the value of %1 is no text").arg(path));
        }
        values.insert(path.mid(slash + 1), *value);
    }
    return values;
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
