#pragma once

#include "FileChunks.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <expected>

/// The commands that send something once, the same words on the command line and in the shell.
/// Pure but for the log files that are read; any thread.
namespace brenvale::phone {

/// What a command makes the phone send: messages, then files.
struct Sending {
    QList<QByteArray> messages = {};
    QStringList files = {};
    SlashStyle slashes = SlashStyle::Plain;
};

[[nodiscard]] bool isSingleCommand(const QString& word);

/// Reads a command: its word, then its arguments and options. The error is a text for people.
std::expected<Sending, QString> readSingleCommand(const QStringList& words);

/// The words of a line in the shell. Double quotes hold words together; what follows "raw" is one word as it
/// stands.
QStringList wordsOfLine(const QString& line);

/// One line for each command.
QString singleCommandsHelp();

} // namespace brenvale::phone
