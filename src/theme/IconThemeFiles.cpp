#include "theme/IconThemeFiles.h"

#include <QFile>
#include <QSettings>

#include <algorithm>
#include <cstdlib>

namespace brenvale {

namespace {

/// The size that themes draw in one colour, for buttons and menus; larger ones are pictures.
constexpr int plainSize = 22;
constexpr int largestPlainSize = 24;

struct ThemeFolder {
    QString path;
    int distance = 0; ///< from the size that is wanted; less is better
};

QString groupValue(const QSettings& index, const QString& group, const QString& key) {
    return index.value(group + QLatin1Char('/') + key).toStringList().join(QLatin1Char(','));
}

/// The folders of a theme with one-colour icons, the best first.
QList<ThemeFolder> plainFolders(const QString& theme, const QSettings& index) {
    QList<ThemeFolder> folders;
    for (const auto& name : index.value(QStringLiteral("Icon Theme/Directories")).toStringList()) {
        const bool isSymbolic = name.contains(QStringLiteral("symbolic"));
        const int size = groupValue(index, name, QStringLiteral("Size")).toInt();
        const bool isScaled = groupValue(index, name, QStringLiteral("Scale")).toInt() > 1;
        if (isSymbolic || (size <= largestPlainSize && !isScaled)) {
            folders.append({theme + QLatin1Char('/') + name, isSymbolic ? -1 : std::abs(size - plainSize)});
        }
    }
    std::ranges::stable_sort(folders, {}, &ThemeFolder::distance);
    return folders;
}

QString fileInTheme(const QString& name, const QString& theme, const QSettings& index) {
    for (const auto& folder : plainFolders(theme, index)) {
        for (const auto& ending : {QStringLiteral("-symbolic.svg"), QStringLiteral(".svg")}) {
            const auto file = folder.path + QLatin1Char('/') + name + ending;
            if (QFile::exists(file)) {
                return file;
            }
        }
    }
    return {};
}

} // namespace

QString iconThemeFile(const QString& name, const QStringList& themes, const QStringList& searchPaths) {
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
            const auto indexFile = path + QStringLiteral("/index.theme");
            if (!QFile::exists(indexFile)) {
                continue;
            }
            const QSettings index(indexFile, QSettings::IniFormat);
            const auto file = fileInTheme(name, path, index);
            if (!file.isEmpty()) {
                return file;
            }
            parents += index.value(QStringLiteral("Icon Theme/Inherits")).toStringList();
        }
        waiting = parents + waiting;
    }
    return {};
}

} // namespace brenvale
