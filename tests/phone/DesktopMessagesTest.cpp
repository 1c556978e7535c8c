#include "DesktopMessages.h"
#include "Printing.h"

#include <gtest/gtest.h>

namespace brenvale::phone {
namespace {

TEST(DesktopMessages, KnownOnesAreDescribed) {
    EXPECT_EQ(describedDesktopMessage(R"({"action":"connected","deviceName":"Desk"})"),
              QStringLiteral("greets the phone as \"Desk\""));
    EXPECT_EQ(describedDesktopMessage(R"({"action":"connected"})"), QStringLiteral("greets the phone"));
    EXPECT_EQ(describedDesktopMessage(R"({"action":"make_call","number":"12","simSlot":1})"),
              QStringLiteral("calls 12 with SIM 1"));
    EXPECT_EQ(describedDesktopMessage(R"({"action":"toggle_mute","enabled":true})"),
              QStringLiteral("turns mute on"));
    EXPECT_EQ(describedDesktopMessage(R"({"action":"toggle_speaker","enabled":false})"),
              QStringLiteral("turns the speaker off"));
    EXPECT_EQ(describedDesktopMessage(R"({"action":"reply","key":"k","message":"m"})"),
              QStringLiteral("replies to the notification \"k\": m"));
}

TEST(DesktopMessages, TextWithAPlaceMarkIsShownAsItIs) {
    EXPECT_EQ(describedDesktopMessage(R"({"action":"send_sms","number":"%3","body":"%1","simSlot":0})"),
              QStringLiteral("sends an SMS to %3 with SIM 0: %1"));
}

TEST(DesktopMessages, UnknownOnesAreShownAsTheyCame) {
    EXPECT_TRUE(
        describedDesktopMessage(R"({"action":"dance"})").endsWith(QLatin1String(R"({"action":"dance"})")));
}

TEST(DesktopMessages, BrokenOnesAreShownAsTheyCame) {
    const QByteArray broken = R"({"action":"make_call","number":"1"2","simSlot":0})";
    EXPECT_EQ(desktopMessage(broken), std::nullopt);
    EXPECT_TRUE(describedDesktopMessage(broken).endsWith(QString::fromUtf8(broken)));
    EXPECT_EQ(desktopMessage("[]"), std::nullopt);
}

} // namespace
} // namespace brenvale::phone
