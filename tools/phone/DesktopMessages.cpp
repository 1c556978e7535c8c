#include "DesktopMessages.h"

#include <QByteArrayView>
#include <QJsonDocument>
#include <QJsonValue>

#include <array>

namespace brenvale::phone {
namespace {

using Describe = QString (*)(const QJsonObject& message);

struct Description {
    const char* action;
    Describe describe;
};

QString text(const QJsonObject& message, const char* key) {
    return message.value(QLatin1String(key)).toString();
}

qint64 number(const QJsonObject& message, const char* key) {
    return message.value(QLatin1String(key)).toInteger();
}

QString onOrOff(const QJsonObject& message) {
    return message.value(QLatin1String("enabled")).toBool() ? QStringLiteral("on") : QStringLiteral("off");
}

QString greeting(const QJsonObject& message) {
    const QString name = text(message, "deviceName");
    return name.isEmpty() ? QStringLiteral("greets the phone")
                          : QStringLiteral("greets the phone as \"%1\"").arg(name);
}

QString placedCall(const QJsonObject& message) {
    return QStringLiteral("calls %1 with SIM %2")
        .arg(text(message, "number"), QString::number(number(message, "simSlot")));
}

QString sentSms(const QJsonObject& message) {
    return QStringLiteral("sends an SMS to %1 with SIM %2: %3")
        .arg(text(message, "number"), QString::number(number(message, "simSlot")), text(message, "body"));
}

QString reply(const QJsonObject& message) {
    return QStringLiteral("replies to the notification \"%1\": %2")
        .arg(text(message, "key"), text(message, "message"));
}

QString fileStart(const QJsonObject& message) {
    return QStringLiteral("sends the file \"%1\" of %2 bytes")
        .arg(text(message, "fileName"), QString::number(number(message, "fileSize")));
}

QString fileChunk(const QJsonObject& message) {
    const bool isLast = message.value(QLatin1String("isLast")).toBool();
    return QStringLiteral("sends %1 of \"%2\", %3 characters of base64")
        .arg(isLast ? QStringLiteral("the last piece") : QStringLiteral("a piece"), text(message, "fileName"),
             QString::number(text(message, "fileData").size()));
}

constexpr std::array descriptions{
    Description{.action = "connected", .describe = greeting},
    Description{.action = "find_device",
                .describe =
                    [](const QJsonObject&) {
                        return QStringLiteral("looks for the phone: it rings");
                    }},
    Description{.action = "get_sms_history",
                .describe =
                    [](const QJsonObject&) {
                        return QStringLiteral("asks for the SMS log");
                    }},
    Description{.action = "get_call_history",
                .describe =
                    [](const QJsonObject&) {
                        return QStringLiteral("asks for the call log");
                    }},
    Description{.action = "answer_call",
                .describe =
                    [](const QJsonObject&) {
                        return QStringLiteral("answers the call");
                    }},
    Description{.action = "hangup_call",
                .describe =
                    [](const QJsonObject&) {
                        return QStringLiteral("hangs up");
                    }},
    Description{.action = "make_call", .describe = placedCall},
    Description{.action = "toggle_speaker",
                .describe =
                    [](const QJsonObject& message) {
                        return QStringLiteral("turns the speaker ") + onOrOff(message);
                    }},
    Description{.action = "toggle_mute",
                .describe =
                    [](const QJsonObject& message) {
                        return QStringLiteral("turns mute ") + onOrOff(message);
                    }},
    Description{.action = "media_command",
                .describe =
                    [](const QJsonObject& message) {
                        return QStringLiteral("media key ") + text(message, "command");
                    }},
    Description{.action = "nav_command",
                .describe =
                    [](const QJsonObject& message) {
                        return QStringLiteral("navigation ") + text(message, "command");
                    }},
    Description{.action = "clipboard",
                .describe =
                    [](const QJsonObject& message) {
                        return QStringLiteral("sets the clipboard: ") + text(message, "text");
                    }},
    Description{.action = "reply", .describe = reply},
    Description{.action = "send_sms", .describe = sentSms},
    Description{.action = "file_transfer_start", .describe = fileStart},
    Description{.action = "file_chunk", .describe = fileChunk},
};

} // namespace

std::optional<QJsonObject> desktopMessage(const QByteArray& bytes) {
    const QJsonDocument document = QJsonDocument::fromJson(bytes);
    return document.isObject() ? std::optional(document.object()) : std::nullopt;
}

QString describedDesktopMessage(const QByteArray& bytes) {
    const auto message = desktopMessage(bytes);
    if (!message) {
        return QStringLiteral("sends something that is no JSON object: ") + QString::fromUtf8(bytes);
    }
    const QString action = text(*message, "action");
    for (const Description& description : descriptions) {
        if (action == QLatin1String(description.action)) {
            return description.describe(*message);
        }
    }
    return QStringLiteral("sends something unknown: ") + QString::fromUtf8(bytes);
}

} // namespace brenvale::phone
