#include "SingleCommands.h"
#include "Printing.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace brenvale::phone {
namespace {

/// The one message that a line makes.
QJsonObject messageOf(const QString& line) {
    const auto sending = readSingleCommand(wordsOfLine(line));
    EXPECT_TRUE(sending.has_value()) << (sending ? QString() : sending.error()).toStdString();
    if (!sending || sending->messages.size() != 1) {
        return {};
    }
    return QJsonDocument::fromJson(sending->messages.constFirst()).object();
}

QJsonObject object(const char* json) {
    return QJsonDocument::fromJson(json).object();
}

bool isError(const QString& line) {
    return !readSingleCommand(wordsOfLine(line)).has_value();
}

TEST(SingleCommands, NotifyTakesItsOptions) {
    EXPECT_EQ(messageOf(QStringLiteral(R"(notify --app A --title "T t" --body B --key K --time 12.5)")),
              object(R"({"app":"A","title":"T t","body":"B","key":"K","time":12.5})"));
}

TEST(SingleCommands, NotifyWithoutOptionsIsANotificationOfNow) {
    const QJsonObject message = messageOf(QStringLiteral("notify"));
    EXPECT_TRUE(message.contains(QLatin1String("app")));
    EXPECT_GT(message.value(QLatin1String("time")).toDouble(), 1.6e9);
    EXPECT_LT(message.value(QLatin1String("time")).toDouble(), 1e11) << "seconds, not milliseconds";
    EXPECT_FALSE(message.contains(QLatin1String("key")));
}

TEST(SingleCommands, SimsAreSlotAndCarrier) {
    EXPECT_EQ(
        messageOf(QStringLiteral("sims 0:A 1:B:C")),
        object(R"({"action":"sim_info","sims":[{"slot":0,"carrier":"A"},{"slot":1,"carrier":"B:C"}]})"));
    EXPECT_TRUE(isError(QStringLiteral("sims A")));
    EXPECT_TRUE(isError(QStringLiteral("sims 1")));
}

TEST(SingleCommands, CallUsesTheUsualActionOfItsState) {
    EXPECT_EQ(messageOf(QStringLiteral("call ringing --number 12 --name N")),
              object(R"({"action":"incoming_call","state":"RINGING","number":"12","name":"N"})"));
    EXPECT_EQ(messageOf(QStringLiteral("call offhook --duration 7")),
              object(R"({"action":"call_state_changed","state":"OFFHOOK","duration":7})"));
    EXPECT_EQ(messageOf(QStringLiteral("call idle --action call_ended")),
              object(R"({"action":"call_ended","state":"IDLE"})"));
    EXPECT_TRUE(isError(QStringLiteral("call dancing")));
    EXPECT_TRUE(isError(QStringLiteral("call")));
}

TEST(SingleCommands, RemoteTakesNegativeNumbers) {
    EXPECT_EQ(messageOf(QStringLiteral("remote move --type mouse_move --dx -5 --dy 2.5")),
              object(R"({"action":"remote_control","command":"move","type":"mouse_move","dx":-5,"dy":2.5})"));
    EXPECT_TRUE(isError(QStringLiteral("remote move --dx far")));
}

TEST(SingleCommands, RemoteTypesTextAsItStands) {
    EXPECT_EQ(messageOf(QStringLiteral("remote type --not an \"option  here\" -5")),
              object(R"({"action":"remote_control","command":"type","type":"keyboard_text",
                         "text":"--not an option  here -5"})"));
    EXPECT_TRUE(isError(QStringLiteral("remote type")));
}

TEST(SingleCommands, RemoteMovesAndClicks) {
    EXPECT_EQ(messageOf(QStringLiteral("remote move -4.5 2")),
              object(R"({"action":"remote_control","command":"move","type":"mouse_move","dx":-4.5,"dy":2})"));
    EXPECT_EQ(
        messageOf(QStringLiteral("remote click")),
        object(R"({"action":"remote_control","command":"click","type":"mouse_click","button":"left"})"));
    EXPECT_EQ(
        messageOf(QStringLiteral("remote click right")),
        object(R"({"action":"remote_control","command":"click","type":"mouse_click","button":"right"})"));
    EXPECT_TRUE(isError(QStringLiteral("remote move 5")));
    EXPECT_TRUE(isError(QStringLiteral("remote move 5 far")));
    EXPECT_TRUE(isError(QStringLiteral("remote move 1 2 3")));
    EXPECT_TRUE(isError(QStringLiteral("remote click middle")));
}

TEST(SingleCommands, RemotePressesMediaKeysAndOpensAddresses) {
    EXPECT_EQ(messageOf(QStringLiteral("remote media next")),
              object(R"({"action":"remote_control","command":"next","type":"media"})"));
    EXPECT_EQ(messageOf(QStringLiteral("remote open https://example.org/?a=1")),
              object(R"({"action":"remote_control","command":"open_url","url":"https://example.org/?a=1"})"));
    EXPECT_EQ(messageOf(QStringLiteral("remote cmd+shift_key_left")),
              object(R"({"action":"remote_control","command":"cmd+shift_key_left"})"));
    EXPECT_TRUE(isError(QStringLiteral("remote media")));
    EXPECT_TRUE(isError(QStringLiteral("remote open")));
    EXPECT_TRUE(isError(QStringLiteral("remote")));
}

TEST(SingleCommands, BatteryTakesAWholeNumber) {
    EXPECT_EQ(messageOf(QStringLiteral("battery 80 --charging")),
              object(R"({"action":"battery_status","level":80,"isCharging":true})"));
    EXPECT_TRUE(isError(QStringLiteral("battery full")));
    EXPECT_TRUE(isError(QStringLiteral("battery 1 2")));
    EXPECT_TRUE(isError(QStringLiteral("battery 1 --fast")));
}

TEST(SingleCommands, DeviceInfoAndConnectedNameThePhone) {
    EXPECT_EQ(messageOf(QStringLiteral("device-info --wifi W")),
              object(R"({"action":"device_info","wifiName":"W"})"));
    EXPECT_EQ(messageOf(QStringLiteral("connected My phone")),
              object(R"({"action":"connected","deviceName":"My phone"})"));
}

TEST(SingleCommands, ClipboardTextMayLookLikeAnOption) {
    EXPECT_EQ(messageOf(QStringLiteral("clipboard --not an option")),
              object(R"({"action":"clipboard","text":"--not an option"})"));
}

TEST(SingleCommands, RawIsSentAsItStands) {
    const auto sending = readSingleCommand(wordsOfLine(QStringLiteral(R"(raw  {"a": "b  c"})")));
    ASSERT_TRUE(sending.has_value());
    EXPECT_EQ(sending->messages, QList<QByteArray>{R"({"a": "b  c"})"});
    EXPECT_TRUE(isError(QStringLiteral("raw")));
}

TEST(SingleCommands, FileTakesPathsAndTheStyleOfSlashes) {
    const auto sending = readSingleCommand(wordsOfLine(QStringLiteral(R"(file --escape-slashes a "b c")")));
    ASSERT_TRUE(sending.has_value());
    EXPECT_EQ(sending->files, (QStringList{QStringLiteral("a"), QStringLiteral("b c")}));
    EXPECT_EQ(sending->slashes, SlashStyle::Escaped);
    EXPECT_TRUE(isError(QStringLiteral("file")));
}

TEST(SingleCommands, LogIsAListOrAWholeMessage) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("log.json"));
    const auto write = [&path](const QByteArray& content) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    };
    write(R"([{"body":"x"}])");
    EXPECT_EQ(messageOf(QStringLiteral("sms-log ") + path),
              object(R"({"action":"sms_history","messages":[{"body":"x"}]})"));
    EXPECT_EQ(messageOf(QStringLiteral("call-log ") + path),
              object(R"({"action":"call_history","calls":[{"body":"x"}]})"));
    write(R"({"action":"odd"})");
    EXPECT_EQ(messageOf(QStringLiteral("sms-log ") + path), object(R"({"action":"odd"})"));
    write("no JSON");
    EXPECT_TRUE(isError(QStringLiteral("sms-log ") + path));
    EXPECT_TRUE(isError(QStringLiteral("sms-log missing.json")));
}

TEST(SingleCommands, UnknownWordIsAnError) {
    EXPECT_TRUE(isError(QStringLiteral("dance")));
    EXPECT_FALSE(isSingleCommand(QStringLiteral("dance")));
    EXPECT_TRUE(isSingleCommand(QStringLiteral("sms-log")));
}

TEST(SingleCommands, BlankLineHasNoWords) {
    EXPECT_TRUE(wordsOfLine(QStringLiteral("  \t")).isEmpty());
}

} // namespace
} // namespace brenvale::phone
