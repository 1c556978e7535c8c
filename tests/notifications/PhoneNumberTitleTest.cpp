#include "notifications/PhoneNumberTitle.h"

#include <gtest/gtest.h>

using brenvale::looksLikePhoneNumber;

TEST(LooksLikePhoneNumber, AnEmptyTextDoesNot) {
    EXPECT_FALSE(looksLikePhoneNumber(QString()));
}

TEST(LooksLikePhoneNumber, APlusSignIsEnoughWhateverFollows) {
    EXPECT_TRUE(looksLikePhoneNumber(QStringLiteral("+")));
    EXPECT_TRUE(looksLikePhoneNumber(QStringLiteral("+1 new message")));
    EXPECT_FALSE(looksLikePhoneNumber(QStringLiteral("a+491701")));
}

TEST(LooksLikePhoneNumber, FewerThanSevenCharactersDoNot) {
    EXPECT_FALSE(looksLikePhoneNumber(QStringLiteral("123456")));
    EXPECT_TRUE(looksLikePhoneNumber(QStringLiteral("1234567")));
}

TEST(LooksLikePhoneNumber, MoreThanFourInFiveMustBeNumbers) {
    EXPECT_TRUE(looksLikePhoneNumber(QStringLiteral("01701 234567")));
    EXPECT_FALSE(looksLikePhoneNumber(QStringLiteral("abcde1234567")));
    EXPECT_FALSE(looksLikePhoneNumber(QStringLiteral("12345678ab"))) << "four in five is not more than that";
    EXPECT_TRUE(looksLikePhoneNumber(QStringLiteral("123456789ab"))); // 9 of 11
}

TEST(LooksLikePhoneNumber, NumbersOfAnyScriptCount) {
    EXPECT_TRUE(looksLikePhoneNumber(QStringLiteral("٠١٢٣٤٥٦")));
    EXPECT_TRUE(looksLikePhoneNumber(QStringLiteral("ⅣⅤⅥⅦⅧⅨⅩ")));
    EXPECT_TRUE(looksLikePhoneNumber(QStringLiteral("½½½½½½½")));
    EXPECT_TRUE(looksLikePhoneNumber(QStringLiteral("𝟏𝟐𝟑𝟒𝟓𝟔𝟕"))) << "digits beyond the basic plane";
}

TEST(LooksLikePhoneNumber, CharactersAreWhatAReaderSees) {
    EXPECT_FALSE(looksLikePhoneNumber(QStringLiteral("1\u03082\u03083\u0308")))
        << "three characters, six code points";
    EXPECT_FALSE(looksLikePhoneNumber(QStringLiteral("+\u0308123")))
        << "the first character is not a plus sign";
    EXPECT_TRUE(looksLikePhoneNumber(QStringLiteral("1️⃣2️⃣3️⃣4️⃣5️⃣6️⃣7️⃣"))) << "keycaps begin with a digit";
}
