#include "CommandLine.h"

#include <QCommandLineParser>

#include <utility>

namespace brenvale::phone {
namespace {

const QString& programName() {
    static const QString name = QStringLiteral("brenvale-phone");
    return name;
}

QCommandLineOption reconnectOption() {
    return QCommandLineOption(QStringLiteral("reconnect"));
}

std::expected<quint16, QString> readPort(const QString& text) {
    bool isNumber = false;
    const uint port = text.toUInt(&isNumber);
    if (!isNumber || port == 0 || port > 65535) {
        return std::unexpected(QStringLiteral("a port is a number from 1 to 65535, not \"%1\"").arg(text));
    }
    return static_cast<quint16>(port);
}

std::expected<Task, QString> readDemo(const QCommandLineParser& parser) {
    if (!parser.positionalArguments().isEmpty()) {
        return std::unexpected(QStringLiteral("demo: there are too many arguments"));
    }
    return PlayDemo{.isFast = parser.isSet(QStringLiteral("fast")),
                    .endsAfter = parser.isSet(QStringLiteral("once")),
                    .folder = parser.value(QStringLiteral("files"))};
}

std::expected<Task, QString> readReceive(const QCommandLineParser& parser) {
    if (parser.positionalArguments().size() != 1) {
        return std::unexpected(QStringLiteral("receive: it takes one folder"));
    }
    return ReceiveFiles{.folder = parser.positionalArguments().constFirst()};
}

std::expected<Task, QString> readShell(const QCommandLineParser& parser) {
    if (!parser.positionalArguments().isEmpty()) {
        return std::unexpected(QStringLiteral("shell: there are too many arguments"));
    }
    return RunShell{};
}

std::expected<Task, QString> readStayingTask(const QString& word, const QCommandLineParser& parser) {
    if (word == QLatin1String("demo")) {
        return readDemo(parser);
    }
    return word == QLatin1String("receive") ? readReceive(parser) : readShell(parser);
}

/// The commands that stay with the desktop; their words are the whole command.
std::expected<CommandLine, QString> readStayingCommand(const QStringList& words, LinkOptions link) {
    const QString& word = words.constFirst();
    QCommandLineParser parser;
    parser.addOption(reconnectOption());
    if (word == QLatin1String("demo")) {
        parser.addOptions(
            {QCommandLineOption(QStringLiteral("fast")), QCommandLineOption(QStringLiteral("once"))});
        parser.addOption(QCommandLineOption(QStringLiteral("files"), {}, QStringLiteral("folder")));
    }
    if (!parser.parse(words)) {
        return std::unexpected(QStringLiteral("%1: %2").arg(word, parser.errorText()));
    }
    link.reconnects = link.reconnects || parser.isSet(QStringLiteral("reconnect"));
    auto task = readStayingTask(word, parser);
    if (!task) {
        return std::unexpected(task.error());
    }
    CommandLine commandLine{.link = std::move(link)};
    commandLine.task = *std::move(task);
    return commandLine;
}

std::expected<CommandLine, QString> readCommand(const QStringList& words, LinkOptions link) {
    const QString& word = words.constFirst();
    if (word == QLatin1String("help")) {
        return CommandLine{.link = std::move(link), .task = ShowHelp{}};
    }
    if (word == QLatin1String("demo") || word == QLatin1String("receive") || word == QLatin1String("shell")) {
        return readStayingCommand(words, std::move(link));
    }
    auto sending = readSingleCommand(words);
    if (!sending) {
        return std::unexpected(sending.error());
    }
    return CommandLine{.link = std::move(link), .task = std::move(*sending)};
}

} // namespace

std::expected<CommandLine, QString> readCommandLine(const QStringList& arguments) {
    QCommandLineParser parser;
    // What follows the command is the command's own.
    parser.setOptionsAfterPositionalArgumentsMode(QCommandLineParser::ParseAsPositionalArguments);
    const QCommandLineOption help(QStringList{QStringLiteral("h"), QStringLiteral("help")});
    const QCommandLineOption host(QStringLiteral("host"), {}, QStringLiteral("host"));
    const QCommandLineOption port(QStringLiteral("port"), {}, QStringLiteral("port"));
    parser.addOptions({help, host, port, reconnectOption()});
    if (!parser.parse(QStringList{programName()} + arguments)) {
        return std::unexpected(parser.errorText());
    }
    const QStringList words = parser.positionalArguments();
    if (parser.isSet(help) || (words.size() == 2 && words.at(1) == QLatin1String("--help"))) {
        return CommandLine{.link = {}, .task = ShowHelp{}};
    }
    if (words.isEmpty()) {
        return std::unexpected(QStringLiteral("a command is missing"));
    }
    LinkOptions link{.reconnects = parser.isSet(QStringLiteral("reconnect"))};
    if (parser.isSet(host)) {
        link.host = parser.value(host);
    }
    if (parser.isSet(port)) {
        const auto number = readPort(parser.value(port));
        if (!number) {
            return std::unexpected(number.error());
        }
        link.port = *number;
    }
    return readCommand(words, std::move(link));
}

QString programHelp() {
    return QStringLiteral(
               "Usage: brenvale-phone [--host HOST] [--port PORT] COMMAND\n"
               "\n"
               "A simulated phone for Brenvale. It connects to 127.0.0.1, port 8765, unless told otherwise.\n"
               "\n"
               "Commands that stay with the desktop, until Ctrl-C:\n"
               "  demo [--fast] [--once] [--files DIR] [--reconnect]\n"
               "              plays a lively day and answers what the desktop asks; --fast leaves the pauses "
               "out,\n"
               "              --once ends after the day, --files stores the files that the desktop sends\n"
               "  receive DIR [--reconnect]\n"
               "              stores the files that the desktop sends, and prints everything\n"
               "  shell [--reconnect]\n"
               "              takes the commands below, one a line, also from a pipe; and: pad (keys drive\n"
               "              the desktop), wait SECONDS, help, quit\n"
               "--reconnect tries again every 2 seconds when there is no link.\n"
               "\n"
               "Commands that send once and end:\n") +
           singleCommandsHelp() +
           QStringLiteral("\nExit codes: 0 done, 1 failed (nobody listens, the link is lost, a file cannot "
                          "be read), 2 usage.\n");
}

} // namespace brenvale::phone
