#include "messages/Addresses.h"

#include <gtest/gtest.h>

using namespace brenvale;

TEST(DecimalDigits, AreTheDigitsAloneInOrder) {
    EXPECT_EQ(decimalDigits(u"+49 (170) 123-45"), QStringLiteral("4917012345"));
    EXPECT_EQ(decimalDigits(u""), QString());
    EXPECT_EQ(decimalDigits(u"Bank"), QString());
}

TEST(DecimalDigits, OfAnyScriptStayAsTheyAre) {
    EXPECT_EQ(decimalDigits(u"a٠١٢b३c"), QStringLiteral("٠١٢३"));
    EXPECT_EQ(decimalDigits(u"𝟘x𝟙"), QStringLiteral("𝟘𝟙")) << "beyond the first plane";
}

TEST(DecimalDigits, AreNeitherFractionsNorNumeralsNorHalfCharacters) {
    EXPECT_EQ(decimalDigits(u"½ Ⅷ ② x²"), QString());
    EXPECT_EQ(decimalDigits(QString(QChar(0xd835)) + u'1' + QChar(0xdfd8)), QStringLiteral("1"));
}

TEST(NormalizeAddress, IsTheLastTenDigits) {
    EXPECT_EQ(normalizeAddress(QStringLiteral("+1 (202) 555-0123")), QStringLiteral("2025550123"));
    EXPECT_EQ(normalizeAddress(QStringLiteral("2025550123")), QStringLiteral("2025550123"));
    EXPECT_EQ(normalizeAddress(QStringLiteral("004912025550123")), QStringLiteral("2025550123"));
}

TEST(NormalizeAddress, KeepsFewerThanTenDigits) {
    EXPECT_EQ(normalizeAddress(QStringLiteral("+123 456 789")), QStringLiteral("123456789"));
    EXPECT_NE(normalizeAddress(QStringLiteral("1234567890")), normalizeAddress(QStringLiteral("234567890")));
}

TEST(NormalizeAddress, CountsDigitsNotCodeUnits) {
    EXPECT_EQ(normalizeAddress(QStringLiteral("𝟙𝟚𝟛𝟜𝟝𝟞𝟟𝟠𝟡𝟘𝟙")), QStringLiteral("𝟚𝟛𝟜𝟝𝟞𝟟𝟠𝟡𝟘𝟙"));
}

TEST(NormalizeAddress, WithoutADigitIsTheWholeInLowerCase) {
    EXPECT_EQ(normalizeAddress(QStringLiteral("My-BANK Ä")), QStringLiteral("my-bank ä"));
    EXPECT_EQ(normalizeAddress(QString()), QString());
}

TEST(NormalizeAddress, DropsLettersBesideADigit) {
    EXPECT_EQ(normalizeAddress(QStringLiteral("Taxi1")), QStringLiteral("1"));
    EXPECT_EQ(normalizeAddress(QStringLiteral("Bank1")), QStringLiteral("1"));
}

TEST(TrimmedBlanks, TakesBlanksOfAllKindsAndTabsButNoLineFeeds) {
    EXPECT_EQ(trimmedBlanks(QStringLiteral(" \t\u00a0\u3000a b\u2003 ")), QStringLiteral("a b"));
    EXPECT_EQ(trimmedBlanks(QStringLiteral("\na\n")), QStringLiteral("\na\n"));
    EXPECT_EQ(trimmedBlanks(QStringLiteral(" \t ")), QString());
}

TEST(LooksNumeric, DigitsAloneDo) {
    EXPECT_TRUE(looksNumeric(QStringLiteral("1")));
    EXPECT_TRUE(looksNumeric(QStringLiteral(" 123\t")));
    EXPECT_TRUE(looksNumeric(QStringLiteral("٣٤")));
}

TEST(LooksNumeric, AnythingWithADigitBehindAPlusSignDoes) {
    EXPECT_TRUE(looksNumeric(QStringLiteral("+49 170-1")));
    EXPECT_TRUE(looksNumeric(QStringLiteral(" +abc1")));
    EXPECT_FALSE(looksNumeric(QStringLiteral("+")));
    EXPECT_FALSE(looksNumeric(QStringLiteral("+abc")));
}

TEST(LooksNumeric, NothingElseDoes) {
    for (const auto* text : {"", "   ", "abc", "abc1", "12 34", "12-34", "0+1", "\n12"}) {
        EXPECT_FALSE(looksNumeric(QString::fromUtf8(text))) << text;
    }
}
