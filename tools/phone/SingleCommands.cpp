#include "SingleCommands.h"

#include "PhoneMessages.h"

#include <QCommandLineParser>
#include <QDateTime>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

#include <algorithm>
#include <array>
#include <limits>
#include <memory>

namespace brenvale::phone {
namespace {

using Result = std::expected<Sending, QString>;

/// The arguments and the options of one command.
class Arguments {
public:
    struct Options {
        QStringList values; ///< options that take a value
        QStringList flags;
    };

    static std::expected<Arguments, QString> read(const QStringList& words, const Options& options,
                                                  qsizetype fewest, qsizetype most) {
        Arguments arguments;
        for (const QString& name : options.values) {
            arguments.parser_->addOption(QCommandLineOption(name, {}, QStringLiteral("value")));
        }
        for (const QString& name : options.flags) {
            arguments.parser_->addOption(QCommandLineOption(name));
        }
        if (!arguments.parser_->parse(words)) {
            return std::unexpected(arguments.parser_->errorText());
        }
        const qsizetype count = arguments.positional().size();
        if (count < fewest || count > most) {
            return std::unexpected(count < fewest ? QStringLiteral("an argument is missing")
                                                  : QStringLiteral("there are too many arguments"));
        }
        return arguments;
    }

    [[nodiscard]] QStringList positional() const { return parser_->positionalArguments(); }
    [[nodiscard]] QString first() const { return positional().value(0); }
    [[nodiscard]] bool isSet(const char* name) const { return parser_->isSet(QString::fromLatin1(name)); }

    [[nodiscard]] std::optional<QString> text(const char* name) const {
        return isSet(name) ? std::optional(parser_->value(QString::fromLatin1(name))) : std::nullopt;
    }

    [[nodiscard]] std::expected<std::optional<double>, QString> number(const char* name) const {
        const auto written = text(name);
        if (!written) {
            return std::nullopt;
        }
        bool isNumber = false;
        const double value = written->toDouble(&isNumber);
        if (!isNumber) {
            return std::unexpected(
                QStringLiteral("--%1 takes a number, not \"%2\"").arg(QLatin1String(name), *written));
        }
        return value;
    }

private:
    std::unique_ptr<QCommandLineParser> parser_ = std::make_unique<QCommandLineParser>();
};

constexpr qsizetype anyCount = std::numeric_limits<qsizetype>::max();

Sending sendingOf(const QByteArray& message) {
    return {.messages = {message}};
}

Result notify(const QStringList& words) {
    const auto arguments =
        Arguments::read(words,
                        {.values = {QStringLiteral("app"), QStringLiteral("title"), QStringLiteral("body"),
                                    QStringLiteral("key"), QStringLiteral("time")}},
                        0, 0);
    if (!arguments) {
        return std::unexpected(arguments.error());
    }
    const auto time = arguments->number("time");
    if (!time) {
        return std::unexpected(time.error());
    }
    const auto now = static_cast<double>(QDateTime::currentSecsSinceEpoch());
    return sendingOf(notificationMessage({.app = arguments->text("app").value_or(QStringLiteral("Messages")),
                                          .title = arguments->text("title").value_or(QStringLiteral("Phone")),
                                          .body = arguments->text("body").value_or(QStringLiteral("Hello!")),
                                          .time = time->value_or(now),
                                          .key = arguments->text("key")}));
}

/// A log from a file: a list of records, or a whole message, which is sent as it stands.
Result logFromFile(const QStringList& words, const QString& action, const QString& key) {
    const auto arguments = Arguments::read(words, {}, 1, 1);
    if (!arguments) {
        return std::unexpected(arguments.error());
    }
    QFile file(arguments->first());
    if (!file.open(QIODevice::ReadOnly)) {
        return std::unexpected(QStringLiteral("%1: %2").arg(file.fileName(), file.errorString()));
    }
    const QByteArray bytes = file.readAll();
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(bytes, &error);
    if (document.isNull()) {
        return std::unexpected(QStringLiteral("%1: %2").arg(file.fileName(), error.errorString()));
    }
    if (document.isObject()) {
        return sendingOf(bytes);
    }
    const QJsonObject message{{QStringLiteral("action"), action}, {key, document.array()}};
    return sendingOf(QJsonDocument(message).toJson(QJsonDocument::Compact));
}

Result smsLog(const QStringList& words) {
    return logFromFile(words, QStringLiteral("sms_history"), QStringLiteral("messages"));
}

Result callLog(const QStringList& words) {
    return logFromFile(words, QStringLiteral("call_history"), QStringLiteral("calls"));
}

Result sims(const QStringList& words) {
    const auto arguments = Arguments::read(words, {}, 0, anyCount);
    if (!arguments) {
        return std::unexpected(arguments.error());
    }
    QList<Sim> list;
    for (const QString& word : arguments->positional()) {
        bool isNumber = false;
        const qint64 slot = word.section(QLatin1Char(':'), 0, 0).toLongLong(&isNumber);
        if (!isNumber || !word.contains(QLatin1Char(':'))) {
            return std::unexpected(QStringLiteral("a SIM is written SLOT:CARRIER, not \"%1\"").arg(word));
        }
        list.append({.slot = slot, .carrier = word.section(QLatin1Char(':'), 1)});
    }
    return sendingOf(simInfoMessage(list));
}

Result deviceInfo(const QStringList& words) {
    const auto arguments =
        Arguments::read(words, {.values = {QStringLiteral("name"), QStringLiteral("wifi")}}, 0, 0);
    if (!arguments) {
        return std::unexpected(arguments.error());
    }
    return sendingOf(deviceInfoMessage(arguments->text("name"), arguments->text("wifi")));
}

Result connected(const QStringList& words) {
    const auto arguments = Arguments::read(words, {}, 1, anyCount);
    if (!arguments) {
        return std::unexpected(arguments.error());
    }
    return sendingOf(connectedMessage(arguments->positional().join(QLatin1Char(' '))));
}

Result call(const QStringList& words) {
    const auto arguments = Arguments::read(words,
                                           {.values = {QStringLiteral("number"), QStringLiteral("name"),
                                                       QStringLiteral("duration"), QStringLiteral("action")}},
                                           1, 1);
    if (!arguments) {
        return std::unexpected(arguments.error());
    }
    const QString state = arguments->first().toUpper();
    if (!QStringList{QStringLiteral("RINGING"), QStringLiteral("OFFHOOK"), QStringLiteral("IDLE")}.contains(
            state)) {
        return std::unexpected(
            QStringLiteral("a call is ringing, offhook or idle, not \"%1\"").arg(arguments->first()));
    }
    const auto duration = arguments->number("duration");
    if (!duration) {
        return std::unexpected(duration.error());
    }
    const QString usualAction = state == QLatin1String("RINGING") ? QStringLiteral("incoming_call")
                                                                  : QStringLiteral("call_state_changed");
    return sendingOf(
        callMessage({.action = arguments->text("action").value_or(usualAction),
                     .state = state,
                     .number = arguments->text("number"),
                     .name = arguments->text("name"),
                     .duration = duration->transform([](double seconds) { return qint64(seconds); })}));
}

Result file(const QStringList& words) {
    const auto arguments = Arguments::read(words, {.flags = {QStringLiteral("escape-slashes")}}, 1, anyCount);
    if (!arguments) {
        return std::unexpected(arguments.error());
    }
    return Sending{.files = arguments->positional(),
                   .slashes = arguments->isSet("escape-slashes") ? SlashStyle::Escaped : SlashStyle::Plain};
}

Result clipboard(const QStringList& words) {
    return sendingOf(clipboardMessage(words.sliced(1).join(QLatin1Char(' '))));
}

Result battery(const QStringList& words) {
    const auto arguments = Arguments::read(words, {.flags = {QStringLiteral("charging")}}, 1, 1);
    if (!arguments) {
        return std::unexpected(arguments.error());
    }
    bool isNumber = false;
    const qint64 level = arguments->first().toLongLong(&isNumber);
    if (!isNumber) {
        return std::unexpected(
            QStringLiteral("the battery has a whole number, not \"%1\"").arg(arguments->first()));
    }
    return sendingOf(batteryMessage(level, arguments->isSet("charging")));
}

Result typeText(const QStringList& words) {
    if (words.isEmpty()) {
        return std::unexpected(QStringLiteral("an argument is missing"));
    }
    return sendingOf(remoteControlMessage({.command = QStringLiteral("type"),
                                           .type = QStringLiteral("keyboard_text"),
                                           .text = words.join(QLatin1Char(' '))}));
}

Result movePointer(const QStringList& words) {
    bool isX = false;
    bool isY = false;
    const double dx = words.value(0).toDouble(&isX);
    const double dy = words.value(1).toDouble(&isY);
    if (words.size() != 2 || !isX || !isY) {
        return std::unexpected(QStringLiteral("a move takes two numbers"));
    }
    return sendingOf(remoteControlMessage(
        {.command = QStringLiteral("move"), .type = QStringLiteral("mouse_move"), .dx = dx, .dy = dy}));
}

Result clickButton(const QStringList& words) {
    const auto button = words.value(0, QStringLiteral("left"));
    if (words.size() > 1 || (button != QLatin1String("left") && button != QLatin1String("right"))) {
        return std::unexpected(QStringLiteral("a click is left or right"));
    }
    return sendingOf(remoteControlMessage(
        {.command = QStringLiteral("click"), .type = QStringLiteral("mouse_click"), .button = button}));
}

Result pressMediaKey(const QStringList& words) {
    if (words.size() != 1) {
        return std::unexpected(QStringLiteral("media takes one word"));
    }
    return sendingOf(remoteControlMessage({.command = words.constFirst(), .type = QStringLiteral("media")}));
}

Result openAddress(const QStringList& words) {
    if (words.size() != 1) {
        return std::unexpected(QStringLiteral("open takes one address"));
    }
    return sendingOf(
        remoteControlMessage({.command = QStringLiteral("open_url"), .url = words.constFirst()}));
}

/// A short form of a remote command; its arguments are no options, so that a move may be negative.
struct ShortForm {
    const char* word;
    Result (*read)(const QStringList& arguments);
};
constexpr std::array shortForms{
    ShortForm{.word = "type", .read = typeText},     ShortForm{.word = "move", .read = movePointer},
    ShortForm{.word = "click", .read = clickButton}, ShortForm{.word = "media", .read = pressMediaKey},
    ShortForm{.word = "open", .read = openAddress},
};

bool isOption(const QString& word) {
    return word.startsWith(QLatin1String("--"));
}

Result remote(const QStringList& words) {
    const auto* const form = std::ranges::find_if(shortForms, [&words](const ShortForm& candidate) {
        return words.value(1) == QLatin1String(candidate.word);
    });
    if (form != shortForms.end() && (form->read == typeText || std::ranges::none_of(words, isOption))) {
        return form->read(words.sliced(2));
    }
    const auto arguments =
        Arguments::read(words,
                        {.values = {QStringLiteral("type"), QStringLiteral("text"), QStringLiteral("dx"),
                                    QStringLiteral("dy"), QStringLiteral("button"), QStringLiteral("url")}},
                        1, 1);
    if (!arguments) {
        return std::unexpected(arguments.error());
    }
    const auto dx = arguments->number("dx");
    const auto dy = arguments->number("dy");
    if (!dx || !dy) {
        return std::unexpected(dx ? dy.error() : dx.error());
    }
    return sendingOf(remoteControlMessage({.command = arguments->first(),
                                           .type = arguments->text("type"),
                                           .text = arguments->text("text"),
                                           .dx = *dx,
                                           .dy = *dy,
                                           .button = arguments->text("button"),
                                           .url = arguments->text("url")}));
}

// Nothing is checked: this is the way to send what no phone would.
Result raw(const QStringList& words) {
    if (words.size() < 2) {
        return std::unexpected(QStringLiteral("an argument is missing"));
    }
    return sendingOf(words.sliced(1).join(QLatin1Char(' ')).toUtf8());
}

struct SingleCommand {
    const char* word;
    const char* arguments;
    Result (*read)(const QStringList& words);
};

constexpr std::array singleCommands{
    SingleCommand{.word = "notify",
                  .arguments = "[--app A] [--title T] [--body B] [--key K] [--time SECONDS]",
                  .read = notify},
    SingleCommand{.word = "sms-log",
                  .arguments = "FILE            a JSON list of messages, or the whole message",
                  .read = smsLog},
    SingleCommand{.word = "call-log",
                  .arguments = "FILE            a JSON list of calls, or the whole message",
                  .read = callLog},
    SingleCommand{.word = "sims", .arguments = "SLOT:CARRIER...", .read = sims},
    SingleCommand{.word = "device-info", .arguments = "[--name N] [--wifi W]", .read = deviceInfo},
    SingleCommand{.word = "connected", .arguments = "NAME", .read = connected},
    SingleCommand{.word = "call",
                  .arguments =
                      "ringing|offhook|idle [--number N] [--name N] [--duration S]\n"
                      "              [--action incoming_call|call_state_changed|call_update|call_ended]",
                  .read = call},
    SingleCommand{.word = "file", .arguments = "[--escape-slashes] PATH...", .read = file},
    SingleCommand{.word = "clipboard", .arguments = "TEXT", .read = clipboard},
    SingleCommand{.word = "battery", .arguments = "PERCENT [--charging]", .read = battery},
    SingleCommand{.word = "remote",
                  .arguments =
                      "COMMAND [--type T] [--text T] [--dx X] [--dy Y] [--button B] [--url U]\n"
                      "              such as key_left, cmd+shift_key_left, slide_next, vol_up, mute_mac,\n"
                      "              lock_mac; or: type TEXT | move DX DY | click [left|right] |\n"
                      "              media play_pause|next|prev|vol_up|vol_down | open URL",
                  .read = remote},
    SingleCommand{.word = "raw", .arguments = "TEXT            sends the text as it is", .read = raw},
};

const SingleCommand* singleCommandOf(const QString& word) {
    const auto* const found = std::ranges::find_if(singleCommands, [&word](const SingleCommand& command) {
        return word == QLatin1String(command.word);
    });
    return found == singleCommands.end() ? nullptr : found;
}

} // namespace

bool isSingleCommand(const QString& word) {
    return singleCommandOf(word) != nullptr;
}

std::expected<Sending, QString> readSingleCommand(const QStringList& words) {
    const SingleCommand* const command = singleCommandOf(words.value(0));
    if (command == nullptr) {
        return std::unexpected(QStringLiteral("there is no command \"%1\"").arg(words.value(0)));
    }
    auto sending = command->read(words);
    if (!sending) {
        return std::unexpected(QStringLiteral("%1: %2").arg(QLatin1String(command->word), sending.error()));
    }
    return sending;
}

QStringList wordsOfLine(const QString& line) {
    const QString trimmed = line.trimmed();
    const QString word = trimmed.section(QLatin1Char(' '), 0, 0);
    if (word == QLatin1String("raw")) {
        const QString rest = trimmed.sliced(word.size()).trimmed();
        return rest.isEmpty() ? QStringList{word} : QStringList{word, rest};
    }
    return QProcess::splitCommand(trimmed);
}

QString singleCommandsHelp() {
    QString help;
    for (const SingleCommand& command : singleCommands) {
        help += QStringLiteral("  %1 %2\n")
                    .arg(QLatin1String(command.word), -11)
                    .arg(QLatin1String(command.arguments));
    }
    return help;
}

} // namespace brenvale::phone
