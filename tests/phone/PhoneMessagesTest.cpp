#include "PhoneMessages.h"
#include "Printing.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

namespace brenvale::phone {
namespace {

QJsonObject parsed(const QByteArray& message) {
    QJsonParseError error;
    const QJsonObject object = QJsonDocument::fromJson(message, &error).object();
    EXPECT_EQ(error.error, QJsonParseError::NoError) << message.toStdString();
    return object;
}

/// Compares by content, as the order of the members means nothing.
void expectMessage(const QByteArray& message, const char* expected) {
    EXPECT_EQ(parsed(message), parsed(expected)) << message.toStdString();
}

TEST(PhoneMessages, ConnectedHasTheDeviceName) {
    expectMessage(connectedMessage(QStringLiteral("Mara's \"phone\"")),
                  R"({"action":"connected","deviceName":"Mara's \"phone\""})");
}

TEST(PhoneMessages, DeviceInfoLeavesOutWhatIsNotSet) {
    expectMessage(deviceInfoMessage(std::nullopt, std::nullopt), R"({"action":"device_info"})");
    expectMessage(deviceInfoMessage(QStringLiteral("P"), QString()),
                  R"({"action":"device_info","deviceName":"P","wifiName":""})");
}

TEST(PhoneMessages, SmsLogHasMillisecondDates) {
    const QByteArray message = smsHistoryMessage(
        {{.address = QStringLiteral("+1"), .body = QStringLiteral("hi"), .date = 1'700'000'000'123}});
    expectMessage(message, R"({"action":"sms_history","messages":[
        {"address":"+1","body":"hi","date":1700000000123,"type":1}]})");
    EXPECT_TRUE(message.contains("1700000000123")) << "written as a whole number, without an exponent";
}

TEST(PhoneMessages, SmsSentHasTypeTwoAndItsName) {
    expectMessage(smsHistoryMessage({{.address = QStringLiteral("+1"),
                                      .name = QStringLiteral("נועה"),
                                      .body = QStringLiteral("👍"),
                                      .direction = Direction::Outgoing}}),
                  R"({"action":"sms_history","messages":[
                      {"address":"+1","name":"נועה","body":"👍","date":0,"type":2}]})");
}

TEST(PhoneMessages, EmptyLogsAreEmptyLists) {
    expectMessage(smsHistoryMessage({}), R"({"action":"sms_history","messages":[]})");
    expectMessage(callHistoryMessage({}), R"({"action":"call_history","calls":[]})");
    expectMessage(simInfoMessage({}), R"({"action":"sim_info","sims":[]})");
}

TEST(PhoneMessages, CallLogHasEveryRequiredMember) {
    expectMessage(callHistoryMessage({{.number = QStringLiteral("5"),
                                       .date = 1'700'000'000'000,
                                       .duration = 62,
                                       .direction = Direction::Missed},
                                      {.number = QStringLiteral("6"), .name = QStringLiteral("Ann")}}),
                  R"({"action":"call_history","calls":[
                      {"number":"5","date":1700000000000,"duration":62,"type":3},
                      {"number":"6","name":"Ann","date":0,"duration":0,"type":1}]})");
}

TEST(PhoneMessages, SimsHaveSlotAndCarrier) {
    expectMessage(simInfoMessage({{.slot = 1, .carrier = QStringLiteral("Tel & Co")}}),
                  R"({"action":"sim_info","sims":[{"slot":1,"carrier":"Tel & Co"}]})");
}

TEST(PhoneMessages, NotificationHasNoActionAndTimeInSeconds) {
    const Notification full{.app = QStringLiteral("Mail"),
                            .title = QStringLiteral("T"),
                            .body = QStringLiteral("a\nb"),
                            .time = 1'700'000'000.5,
                            .key = QStringLiteral("0|mail|1")};
    expectMessage(notificationMessage(full),
                  R"({"app":"Mail","title":"T","body":"a\nb","time":1700000000.5,"key":"0|mail|1"})");
    expectMessage(notificationMessage({.app = QStringLiteral("Mail"), .title = {}, .body = {}}),
                  R"({"app":"Mail","title":"","body":""})");
}

TEST(PhoneMessages, CallReportLeavesOutWhatIsNotSet) {
    expectMessage(callMessage({.action = QStringLiteral("call_ended")}), R"({"action":"call_ended"})");
    expectMessage(callMessage({.action = QStringLiteral("call_update"),
                               .state = QStringLiteral("OFFHOOK"),
                               .number = QStringLiteral("12"),
                               .name = QStringLiteral("N"),
                               .duration = -1}),
                  R"({"action":"call_update","state":"OFFHOOK","number":"12","name":"N","duration":-1})");
}

TEST(PhoneMessages, ClipboardTextIsEscaped) {
    expectMessage(clipboardMessage(QStringLiteral("a\"\\\n\t\u2028")),
                  "{\"action\":\"clipboard\",\"text\":\"a\\\"\\\\\\n\\t\u2028\"}");
}

TEST(PhoneMessages, BatteryHasLevelAndCharger) {
    expectMessage(batteryMessage(7, true), R"({"action":"battery_status","level":7,"isCharging":true})");
}

TEST(PhoneMessages, RemoteCommandHasOnlyWhatItNeeds) {
    expectMessage(remoteControlMessage({.command = QStringLiteral("next")}),
                  R"({"action":"remote_control","command":"next"})");
    expectMessage(remoteControlMessage({.command = QStringLiteral("m"),
                                        .type = QStringLiteral("mouse_move"),
                                        .text = QStringLiteral("t"),
                                        .dx = -5,
                                        .dy = 2.5,
                                        .button = QStringLiteral("right"),
                                        .url = QStringLiteral("https://a.example/")}),
                  R"({"action":"remote_control","command":"m","type":"mouse_move","text":"t","dx":-5,"dy":2.5,
                      "button":"right","url":"https://a.example/"})");
}

TEST(PhoneMessages, FileMessagesCarryBase64WithoutLineBreaks) {
    expectMessage(fileStartMessage(QStringLiteral("a \"b\".txt"), 5'000'000'000),
                  R"({"action":"file_transfer_start","fileName":"a \"b\".txt","fileSize":5000000000})");
    expectMessage(fileChunkMessage(QStringLiteral("a"), QByteArrayView("\xff\xef\x00", 3), false),
                  R"({"action":"file_chunk","fileName":"a","fileData":"/+8A","isLast":false})");
    expectMessage(fileChunkMessage(QStringLiteral("a"), {}, true),
                  R"({"action":"file_chunk","fileName":"a","fileData":"","isLast":true})");
    expectMessage(fileTransferMessage(QStringLiteral("a"), "x"),
                  R"({"action":"file_transfer","fileName":"a","fileData":"eA=="})");
}

TEST(PhoneMessages, EscapedSlashesMeanTheSame) {
    const QByteArray plain = fileChunkMessage(QStringLiteral("a/\\/b"), "\xff\xff\xff", true);
    const QByteArray escaped = withEscapedSlashes(plain);
    EXPECT_EQ(escaped.count("\\/"), escaped.count('/'));
    EXPECT_TRUE(escaped.contains(R"("fileData":"\/\/\/\/")"));
    EXPECT_EQ(parsed(escaped), parsed(plain));
}

} // namespace
} // namespace brenvale::phone
