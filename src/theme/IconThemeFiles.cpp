#include "theme/IconThemeFiles.h"

#include <QFile>
#include <QSettings>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <tuple>
#include <utility>

namespace brenvale {

namespace {

/// Up to this size themes draw in one colour, for buttons and menus; larger ones are pictures.
constexpr int largestPlainSize = 24;

struct ThemeFolder {
    QString path;
    bool isSymbolic = false;
    int distance = 0; ///< from the size that is wanted; less is better
};

QString groupValue(const QSettings& index, const QString& group, const QString& key) {
    return index.value(group + QLatin1Char('/') + key).toString();
}

/// The folders of a theme that may have one-colour icons, the best first.
QList<ThemeFolder> plainFolders(const QString& theme, int wantedSize, const QSettings& index) {
    QList<ThemeFolder> folders;
    for (const auto& name : index.value(QStringLiteral("Icon Theme/Directories")).toStringList()) {
        const int size = groupValue(index, name, QStringLiteral("Size")).toInt();
        const bool isSymbolic =
            name.contains(QStringLiteral("symbolic")) || name.startsWith(QStringLiteral("scalable"));
        const bool isScaled = groupValue(index, name, QStringLiteral("Scale")).toInt() > 1;
        if (isSymbolic || (size <= largestPlainSize && !isScaled)) {
            folders.append({.path = theme + QLatin1Char('/') + name,
                            .isSymbolic = isSymbolic,
                            .distance = std::abs(size - wantedSize)});
        }
    }
    std::ranges::sort(folders, {}, [](const ThemeFolder& folder) {
        return std::tuple(folder.isSymbolic, folder.distance, folder.path);
    });
    return folders;
}

/// Whether the drawing takes the colour of the text around it, and so has one.
bool isPlain(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && file.readAll().contains("currentColor");
}

QString fileIn(const QList<ThemeFolder>& folders, const QString& name) {
    for (const auto& folder : folders) {
        const auto path = folder.path + QLatin1Char('/') + name;
        if (const auto plain = path + QStringLiteral(".svg"); QFile::exists(plain) && isPlain(plain)) {
            return plain;
        }
        if (const auto symbolic = path + QStringLiteral("-symbolic.svg"); QFile::exists(symbolic)) {
            return symbolic;
        }
    }
    return {};
}

/// What the theme in a folder says of itself; null where there is none.
std::unique_ptr<const QSettings> indexOf(const QString& theme) {
    const auto file = theme + QStringLiteral("/index.theme");
    return QFile::exists(file) ? std::make_unique<const QSettings>(file, QSettings::IniFormat) : nullptr;
}

} // namespace

const QStringList& symbolNames() {
    // Those that few themes have come first.
    static const QStringList names =
        QStringLiteral(
            "dialog-messages overflow-menu window-duplicate key-enter love data-warning settings-configure "
            "notifications "
            "clock download checkmark arrow-left arrow-up sidebar-collapse-left sidebar-expand-left "
            "battery-100 "
            "battery-100-charging edit-clear-locationbar-rtl call-start call-stop call-incoming "
            "call-outgoing "
            "microphone-sensitivity-high microphone-sensitivity-muted document-send edit-find edit-clear "
            "view-refresh "
            "edit-paste edit-copy format-justify-left folder-download folder-open input-keyboard help-about "
            "security-medium network-wireless media-skip-backward media-skip-forward media-seek-backward "
            "media-seek-forward media-playback-start audio-volume-low audio-volume-high go-up go-previous "
            "go-next go-down "
            "format-indent-more format-indent-less go-home")
            .split(QLatin1Char(' '));
    return names;
}

QString themeOfOneHand(const QString& theme, const QStringList& searchPaths) {
    auto fallback = QStringLiteral("breeze");
    if (theme.isEmpty() || theme.startsWith(fallback)) {
        return fallback;
    }
    for (const auto& folder : searchPaths) {
        const auto path = folder + QLatin1Char('/') + theme;
        if (const auto index = indexOf(path)) {
            const auto folders = plainFolders(path, largestPlainSize, *index);
            const bool hasAll = std::ranges::all_of(
                symbolNames(), [&folders](const QString& name) { return !fileIn(folders, name).isEmpty(); });
            return hasAll ? theme : fallback;
        }
    }
    return fallback;
}

QString iconThemeFile(const QString& name, int size, const QStringList& themes,
                      const QStringList& searchPaths) {
    QStringList waiting = themes;
    QStringList seen;
    while (!waiting.isEmpty()) {
        const auto theme = waiting.takeFirst();
        if (theme.isEmpty() || seen.contains(theme)) {
            continue;
        }
        seen.append(theme);
        QStringList parents;
        for (const auto& folder : searchPaths) {
            const auto path = folder + QLatin1Char('/') + theme;
            const auto index = indexOf(path);
            if (!index) {
                continue;
            }
            const auto file = fileIn(plainFolders(path, size, *index), name);
            if (!file.isEmpty()) {
                return file;
            }
            parents += index->value(QStringLiteral("Icon Theme/Inherits")).toStringList();
        }
        waiting = parents + waiting;
    }
    return {};
}

} // namespace brenvale
