#include "platform/linux/scripts/DefaultProgram.h"

#include "platform/linux/CurrentDesktop.h"
#include "platform/linux/KeyFile.h"
#include "platform/linux/scripts/ProgramEntry.h"

#include <QFile>
#include <QFileInfo>
#include <QMimeDatabase>
#include <QStandardPaths>
#include <QUrl>

#include <algorithm>

namespace brenvale {

namespace {

/// The contents of the file at `path` if it is a file.
QByteArray contents(const QString& path) {
    QFile file(path);
    return QFileInfo(path).isFile() && file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// The texts of the lists of associations, the most important first.
QList<QByteArray> associationLists(const ProgramFolders& folders) {
    QStringList names;
    for (const auto& desktop : folders.desktops) {
        names.append(desktop.toLower() + QStringLiteral("-mimeapps.list"));
    }
    names.append(QStringLiteral("mimeapps.list"));
    QList<QByteArray> lists;
    const auto add = [&](const QString& folder) {
        for (const auto& name : names) {
            lists.append(contents(folder + u'/' + name));
        }
    };
    std::ranges::for_each(folders.config, add);
    for (const auto& folder : folders.data) {
        add(folder + QStringLiteral("/applications"));
    }
    return lists;
}

QStringList entryNames(const QByteArray& list, const char* group, const QByteArray& type) {
    const auto value = keyFileValue(list, group, type).value_or(QByteArray());
    return QString::fromUtf8(value).split(u';', Qt::SkipEmptyParts);
}

/// The entries for `type`, in the order in which they are to be tried.
QStringList candidates(const QByteArray& type, const ProgramFolders& folders) {
    const auto lists = associationLists(folders);
    QStringList names;
    for (const auto& list : lists) {
        names.append(entryNames(list, "[Default Applications]", type));
    }
    QStringList removed; // by this list or a more important one
    const auto addUnlessRemoved = [&](const QStringList& more) {
        std::ranges::copy_if(more, std::back_inserter(names),
                             [&](const QString& name) { return !removed.contains(name); });
    };
    for (const auto& list : lists) {
        addUnlessRemoved(entryNames(list, "[Added Associations]", type));
        removed.append(entryNames(list, "[Removed Associations]", type));
    }
    for (const auto& folder : folders.data) { // what the programs say of themselves
        addUnlessRemoved(entryNames(contents(folder + QStringLiteral("/applications/mimeinfo.cache")),
                                    "[MIME Cache]", type));
    }
    names.removeDuplicates();
    return names;
}

/// The file of the entry `name` below `folder`. A "-" in the name may stand for a folder.
QString entryFile(const QString& folder, const QString& name) {
    auto path = folder + u'/' + name;
    if (QFileInfo(path).isFile()) {
        return path;
    }
    for (auto dash = name.indexOf(u'-'); dash > 0; dash = name.indexOf(u'-', dash + 1)) {
        const auto inner = folder + u'/' + name.first(dash);
        if (QFileInfo(inner).isDir()) {
            if (auto file = entryFile(inner, name.sliced(dash + 1)); !file.isEmpty()) {
                return file;
            }
        }
    }
    return {};
}

bool isInstalled(const QString& program) {
    return !QStandardPaths::findExecutable(program).isEmpty();
}

/// The command of the entry `name`; empty where it is not installed or can't be used.
QStringList command(const QString& name, const QString& location, const QString& localPath,
                    const ProgramFolders& folders) {
    if (name.contains(u'/')) {
        return {}; // a name, not a path
    }
    for (const auto& folder : folders.data) {
        const auto file = entryFile(folder + QStringLiteral("/applications"), name);
        if (file.isEmpty()) {
            continue;
        }
        // The first one with that name is the one that counts, even if it only hides the others.
        const auto entry = readProgramEntry(contents(file), file);
        if (!entry || (!entry->tryExec.isEmpty() && !isInstalled(entry->tryExec))) {
            return {};
        }
        auto words = programCommand(*entry, location, localPath);
        return !words.isEmpty() && isInstalled(words.constFirst()) ? words : QStringList();
    }
    return {};
}

/// The kinds of the file, the most particular first.
QList<QByteArray> fileTypes(const QString& path) {
    const QMimeDatabase database;
    const auto type = database.mimeTypeForFile(path);
    QList<QByteArray> types{type.name().toLatin1()};
    for (const auto& ancestor : type.allAncestors()) {
        types.append(ancestor.toLatin1());
    }
    return types;
}

} // namespace

ProgramFolders ProgramFolders::ofSession() {
    return {.config = QStandardPaths::standardLocations(QStandardPaths::GenericConfigLocation),
            .data = QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation),
            .desktops = currentDesktop()};
}

QString locationScheme(const QString& location) {
    const auto isLetter = [](QChar character) {
        const auto small = character.unicode() | 0x20U;
        return small >= u'a' && small <= u'z' && character.unicode() < 0x80;
    };
    const auto mayFollow = [&](QChar character) {
        return isLetter(character) || (character >= u'0' && character <= u'9') ||
               QStringView(u"+-.").contains(character);
    };
    const auto* end = std::ranges::find_if_not(location, mayFollow);
    if (end == location.end() || *end != u':' || end == location.begin() || !isLetter(location.front())) {
        return {};
    }
    return location.first(end - location.begin()).toLower();
}

std::expected<QStringList, QString> defaultProgramCommand(const QString& location,
                                                          const ProgramFolders& folders) {
    const auto scheme = locationScheme(location);
    if (scheme.isEmpty()) {
        return std::unexpected(QStringLiteral("The location does not say what kind of address it is."));
    }
    QList<QByteArray> types{"x-scheme-handler/" + scheme.toLatin1()};
    QString localPath;
    if (scheme == u"file") {
        const QUrl url(location);
        const bool isHere = url.host().isEmpty() || url.host() == u"localhost";
        localPath = isHere ? url.path(QUrl::FullyDecoded) : QString();
        if (localPath.isEmpty() || !QFileInfo::exists(localPath)) {
            return std::unexpected(QStringLiteral("There is no such file on this computer."));
        }
        types = fileTypes(localPath);
    }
    for (const auto& type : types) {
        for (const auto& name : candidates(type, folders)) {
            if (auto words = command(name, location, localPath, folders); !words.isEmpty()) {
                return words;
            }
        }
    }
    return std::unexpected(
        QStringLiteral("No program opens %1.").arg(QString::fromLatin1(types.constFirst())));
}

} // namespace brenvale
