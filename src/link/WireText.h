#pragma once

#include <QByteArray>
#include <QString>

namespace brenvale {

/// The messages to the phone as they go on the wire, in UTF-8. Pure. Three ways of writing them stand side by
/// side, and which message uses which matters: they differ in what they do to the text.

/// Literals.
inline constexpr auto findDeviceText = R"({"action":"find_device"})";
inline constexpr auto getSmsHistoryText = R"({"action":"get_sms_history"})";
inline constexpr auto getCallHistoryText = R"({"action":"get_call_history"})";
inline constexpr auto answerCallText = R"({"action":"answer_call"})";
inline constexpr auto hangupCallText = R"({"action":"hangup_call"})";

/// Templates: the values go in as they are, unescaped, so a number with a double quote makes a broken
/// message.
[[nodiscard]] QByteArray makeCallText(const QString& number, qint64 simSlot);
[[nodiscard]] QByteArray toggleSpeakerText(bool enabled);
[[nodiscard]] QByteArray toggleMuteText(bool enabled);

/// Written by the JSON writer: escaped, the members in no fixed order.
[[nodiscard]] QByteArray connectedGreeting(const QString& deviceName);
[[nodiscard]] QByteArray mediaCommandText(const QString& command);
[[nodiscard]] QByteArray navCommandText(const QString& command);
[[nodiscard]] QByteArray clipboardText(const QString& text);
[[nodiscard]] QByteArray replyText(const QString& key, const QString& message);
[[nodiscard]] QByteArray sendSmsText(const QString& number, const QString& body, qint64 simSlot);

} // namespace brenvale
