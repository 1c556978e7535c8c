#include "fakes/TestServer.h"
#include "link/WireText.h"

#include <gmock/gmock.h>

using namespace brenvale;
using testing::ElementsAre;

namespace {

const QString text = QStringLiteral("a \"b\"\\\n😀");

void sendEverything(WebSocketServer& server) {
    server.findDevice();
    server.requestSmsHistory();
    server.requestCallHistory();
    server.answerCall();
    server.hangupCall();
    server.makeCall(QStringLiteral("123"), 2);
    server.toggleSpeaker(true);
    server.toggleMute(false);
    server.sendMediaCommand(QStringLiteral("play_pause"));
    server.sendNavCommand(QStringLiteral("home"));
    server.sendClipboard(text);
    server.sendReply(QStringLiteral("0|app|key"), text);
    server.sendSms(QStringLiteral("123"), QString(), 1);
}

} // namespace

TEST(OutboundCommands, EachSendsItsMessageInTheOrderOfTheCalls) {
    TestServer test;
    const auto phone = test.connectPhone();
    phone->sent.clear();
    sendEverything(*test.server);
    test.run();
    EXPECT_THAT(phone->sent,
                ElementsAre(findDeviceText, getSmsHistoryText, getCallHistoryText, answerCallText,
                            hangupCallText, makeCallText(QStringLiteral("123"), 2), toggleSpeakerText(true),
                            toggleMuteText(false), mediaCommandText(QStringLiteral("play_pause")),
                            navCommandText(QStringLiteral("home")), clipboardText(text),
                            replyText(QStringLiteral("0|app|key"), text),
                            sendSmsText(QStringLiteral("123"), QString(), 1)));
}

TEST(OutboundCommands, WithoutAPhoneDoNothingAndLogNothing) {
    TestServer test;
    sendEverything(*test.server);
    test.run();
    EXPECT_TRUE(test.fake.log.lines().isEmpty());
}
