#pragma once

#include "SingleCommands.h"

#include <QString>
#include <QStringList>

#include <expected>
#include <variant>

namespace brenvale::phone {

struct ShowHelp {};

/// The scripted day.
struct PlayDemo {
    bool isFast = false;    ///< without the pauses
    bool endsAfter = false; ///< ends after the script instead of staying with the desktop
    QString folder = {};    ///< for the desktop's files; empty where they are not stored
};

struct ReceiveFiles {
    QString folder;
};

struct RunShell {};

using Task = std::variant<ShowHelp, PlayDemo, ReceiveFiles, RunShell, Sending>;

/// Where the desktop is, and whether a lost link is tried again.
struct LinkOptions {
    QString host = QStringLiteral("127.0.0.1");
    quint16 port = 8765;
    bool reconnects = false;
};

struct CommandLine {
    LinkOptions link;
    Task task;
};

/// Reads the program's arguments, without the program's name. The options of the link stand before the
/// command;
/// --reconnect may follow it as well. The error is a text for people.
std::expected<CommandLine, QString> readCommandLine(const QStringList& arguments);

QString programHelp();

} // namespace brenvale::phone
