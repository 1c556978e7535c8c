#include "link/WireText.h"

#include "link/Json.h"
#include "records/ActionMessages.h"

namespace brenvale {

namespace {

/// An action with one member.
QByteArray actionText(const QString& action, const QString& member, const QString& value) {
    return writeJson({{QStringLiteral("action"), action}, {member, value}});
}

const char* word(bool enabled) {
    return enabled ? "true" : "false";
}

} // namespace

QByteArray makeCallText(const QString& number, qint64 simSlot) {
    return R"({"action":"make_call","number":")" + number.toUtf8() + R"(","simSlot":)" +
           QByteArray::number(simSlot) + '}';
}

QByteArray toggleSpeakerText(bool enabled) {
    return QByteArray(R"({"action":"toggle_speaker","enabled":)") + word(enabled) + '}';
}

QByteArray toggleMuteText(bool enabled) {
    return QByteArray(R"({"action":"toggle_mute","enabled":)") + word(enabled) + '}';
}

QByteArray connectedGreeting(const QString& deviceName) {
    return actionText(QStringLiteral("connected"), QStringLiteral("deviceName"), deviceName);
}

QByteArray mediaCommandText(const QString& command) {
    return actionText(QStringLiteral("media_command"), QStringLiteral("command"), command);
}

QByteArray navCommandText(const QString& command) {
    return actionText(QStringLiteral("nav_command"), QStringLiteral("command"), command);
}

QByteArray clipboardText(const QString& text) {
    return actionText(QStringLiteral("clipboard"), QStringLiteral("text"), text);
}

QByteArray replyText(const QString& key, const QString& message) {
    return writeJson(encodeAction(ReplyActionMessage{.key = key, .message = message}));
}

QByteArray sendSmsText(const QString& number, const QString& body, qint64 simSlot) {
    return writeJson(encodeAction(SendSmsActionMessage{.number = number, .body = body, .simSlot = simSlot}));
}

} // namespace brenvale
