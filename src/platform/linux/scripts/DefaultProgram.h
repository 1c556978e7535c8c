#pragma once

#include <QString>
#include <QStringList>

#include <expected>

namespace brenvale {

/// Where the user's choices and the installed programs are told, the most important folder first in each
/// list.
struct ProgramFolders {
    QStringList config;
    QStringList data;
    QStringList desktops; ///< the names in XDG_CURRENT_DESKTOP

    /// Those of this session.
    [[nodiscard]] static ProgramFolders ofSession();
};

/// The name before the colon of `location`, in lower case; empty where there is none. Pure.
[[nodiscard]] QString locationScheme(const QString& location);

/// The program and arguments that open `location`: the user's, the desktop's or the system's default program
/// for its scheme or, where it is a file, for the kind of file (freedesktop.org's specification of default
/// applications, 1.0.1), and else any program that can. Or why there is none. Reads files: may wait.
[[nodiscard]] std::expected<QStringList, QString> defaultProgramCommand(const QString& location,
                                                                        const ProgramFolders& folders);

} // namespace brenvale
