#include "link/WireText.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

using namespace brenvale;

namespace {

/// What a JSON reader makes of a message; empty where it is no JSON object.
QJsonObject read(const QByteArray& text) {
    return QJsonDocument::fromJson(text).object();
}

const QStringList awkwardTexts{QString(),
                               QStringLiteral("plain"),
                               QStringLiteral("\"quoted\" and \\ and /"),
                               QStringLiteral("line\nend\r\n\ttab"),
                               QString(QChar(1)) + QChar(0x1f) + QChar(0x7f) + QChar(0x2028),
                               QString(QChar(0)),
                               QStringLiteral("ä ß Ж 你好 ‏مرحبا‏ 😀👩‍👩‍👧")};

} // namespace

TEST(Literals, AreTheseBytes) {
    EXPECT_STREQ(findDeviceText, R"({"action":"find_device"})");
    EXPECT_STREQ(getSmsHistoryText, R"({"action":"get_sms_history"})");
    EXPECT_STREQ(getCallHistoryText, R"({"action":"get_call_history"})");
    EXPECT_STREQ(answerCallText, R"({"action":"answer_call"})");
    EXPECT_STREQ(hangupCallText, R"({"action":"hangup_call"})");
}

TEST(Templates, AreTheseBytesWithTheValuesInBetween) {
    EXPECT_EQ(makeCallText(QStringLiteral("+49 17"), 1),
              R"({"action":"make_call","number":"+49 17","simSlot":1})");
    EXPECT_EQ(makeCallText(QStringLiteral("*100#ä"), -1),
              R"({"action":"make_call","number":"*100#ä","simSlot":-1})");
    EXPECT_EQ(toggleSpeakerText(true), R"({"action":"toggle_speaker","enabled":true})");
    EXPECT_EQ(toggleSpeakerText(false), R"({"action":"toggle_speaker","enabled":false})");
    EXPECT_EQ(toggleMuteText(true), R"({"action":"toggle_mute","enabled":true})");
    EXPECT_EQ(toggleMuteText(false), R"({"action":"toggle_mute","enabled":false})");
}

TEST(Templates, EscapeNothing) {
    EXPECT_EQ(makeCallText(QStringLiteral("1\"2\\"), 0),
              R"({"action":"make_call","number":"1"2\","simSlot":0})");
}

TEST(WrittenMessages, CarryAnyTextUnharmed) {
    for (const auto& text : awkwardTexts) {
        EXPECT_EQ(read(connectedGreeting(text)),
                  (QJsonObject{{"action", "connected"}, {"deviceName", text}}));
        EXPECT_EQ(read(mediaCommandText(text)),
                  (QJsonObject{{"action", "media_command"}, {"command", text}}));
        EXPECT_EQ(read(navCommandText(text)), (QJsonObject{{"action", "nav_command"}, {"command", text}}));
        EXPECT_EQ(read(clipboardText(text)), (QJsonObject{{"action", "clipboard"}, {"text", text}}));
        EXPECT_EQ(read(replyText(text, text)),
                  (QJsonObject{{"action", "reply"}, {"key", text}, {"message", text}}));
        EXPECT_EQ(read(sendSmsText(text, text, 1)),
                  (QJsonObject{{"action", "send_sms"}, {"number", text}, {"body", text}, {"simSlot", 1}}));
    }
}

TEST(WrittenMessages, AreCompactAndEscaped) {
    EXPECT_EQ(clipboardText(QStringLiteral("\"\\\n\u0001é😀")),
              "{\"action\":\"clipboard\",\"text\":\"\\\"\\\\\\n\\u0001é😀\"}");
}

TEST(WrittenMessages, AreUtf8EvenOfHalfASurrogatePair) {
    for (const auto& text : {QString(QChar(0xd83d)), QStringLiteral("a") + QChar(0xde00) + u'b'}) {
        const auto message = clipboardText(text);
        EXPECT_TRUE(QString::fromUtf8(message).toUtf8() == message) << message.toStdString();
        EXPECT_TRUE(read(message).contains(QStringLiteral("text"))) << message.toStdString();
    }
}

TEST(WrittenMessages, TheSlotIsANumber) {
    EXPECT_EQ(read(sendSmsText({}, {}, 9'007'199'254'740'993))[QStringLiteral("simSlot")].toInteger(),
              9'007'199'254'740'993);
}
