#include "calls/CallerText.h"

#include <gtest/gtest.h>

using namespace brenvale;

namespace {

CallerText incoming(const char* number, std::optional<QString> name = {}) {
    return incomingCallerText({.number = QString::fromUtf8(number), .name = std::move(name)});
}

CallerText lines(const char* first, const char* second = "") {
    return {.firstLine = QString::fromUtf8(first), .secondLine = QString::fromUtf8(second)};
}

} // namespace

TEST(IncomingCallerText, TheNameStandsOverTheNumber) {
    EXPECT_EQ(incoming("+49 170 1", QStringLiteral("Ann")), lines("Ann", "+49 170 1"));
}

TEST(IncomingCallerText, BothAreTrimmedOfBlanksAndLineEnds) {
    EXPECT_EQ(incoming(" 17\n", QStringLiteral("\t Ann \r\n")), lines("Ann", "17"));
}

TEST(IncomingCallerText, ANameThatEqualsTheNumberMakesOneLine) {
    EXPECT_EQ(incoming("17 ", QStringLiteral(" 17")), lines("17"));
}

TEST(IncomingCallerText, WithoutANameTheNumberStandsAlone) {
    EXPECT_EQ(incoming("17"), lines("17"));
    EXPECT_EQ(incoming("17", QStringLiteral("  ")), lines("17"));
}

TEST(IncomingCallerText, UnknownInAnyCaseIsNoName) {
    EXPECT_EQ(incoming("17", QStringLiteral("Unknown")), lines("17"));
    EXPECT_EQ(incoming("17", QStringLiteral(" uNKNOWN ")), lines("17"));
}

TEST(IncomingCallerText, UnknownIsNoNumber) {
    EXPECT_EQ(incoming("unknown", QStringLiteral("Ann")), lines("Ann"));
    EXPECT_EQ(incoming("", QStringLiteral("Ann")), lines("Ann"));
}

TEST(IncomingCallerText, WithNeitherTheCallerIsUnknown) {
    EXPECT_EQ(incoming("unknown"), lines("Unknown Caller"));
    EXPECT_EQ(incoming("", QStringLiteral("Unknown")), lines("Unknown Caller"));
    EXPECT_EQ(incoming(" ", QStringLiteral("")), lines("Unknown Caller"));
}

TEST(ActiveCallerText, TheNameStandsOverTheNumber) {
    EXPECT_EQ(activeCallerText(QStringLiteral("Ann"), QStringLiteral("17")), lines("Ann", "17"));
}

TEST(ActiveCallerText, WithoutANameTheNumberStandsAlone) {
    EXPECT_EQ(activeCallerText({}, QStringLiteral("17")), lines("17"));
}

TEST(ActiveCallerText, ANameThatEqualsTheNumberMakesOneLine) {
    EXPECT_EQ(activeCallerText(QStringLiteral("17"), QStringLiteral("17")), lines("17"));
}

TEST(ActiveCallerText, NothingIsTrimmedAndUnknownIsAName) {
    EXPECT_EQ(activeCallerText(QStringLiteral(" 17"), QStringLiteral("17")), lines(" 17", "17"));
    EXPECT_EQ(activeCallerText(QStringLiteral("unknown"), QStringLiteral("17")), lines("unknown", "17"));
}

TEST(FormatDuration, HasTwoDigitsEach) {
    EXPECT_EQ(formatDuration(0), QStringLiteral("00:00"));
    EXPECT_EQ(formatDuration(59), QStringLiteral("00:59"));
    EXPECT_EQ(formatDuration(60), QStringLiteral("01:00"));
}

TEST(FormatDuration, TheMinutesRunPastAnHour) {
    EXPECT_EQ(formatDuration(3725), QStringLiteral("62:05"));
    EXPECT_EQ(formatDuration(6000), QStringLiteral("100:00"));
}
