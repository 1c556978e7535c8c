#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

namespace brenvale {

/// What a program's desktop entry (freedesktop.org's specification, 1.5) says of how it is started.
struct ProgramEntry {
    QString path;    ///< of the entry
    QByteArray exec; ///< the command line as it stands there
    QString name;    ///< for people
    QString icon;    ///< may be empty
    QString tryExec; ///< the program counts as installed where this one is; may be empty
};

/// The entry in `text`, the contents of the file at `path`; nothing where it is no program that can be
/// started as it is: hidden, without a command line, or made for a terminal. Pure.
[[nodiscard]] std::optional<ProgramEntry> readProgramEntry(const QByteArray& text, const QString& path);

/// The program and its arguments that have the entry's program open `location`, which becomes one argument
/// or a part of one, character for character; `localPath` is the same as a path, empty where it is no file.
/// Empty where the command line is broken. No shell ever sees it. Pure.
[[nodiscard]] QStringList programCommand(const ProgramEntry& entry, const QString& location,
                                         const QString& localPath);

} // namespace brenvale
