#include "messages/Characters.h"

#include <gtest/gtest.h>

using namespace brenvale;

TEST(Initials, OfTwoWordsOrMoreAreTheFirstTwo) {
    EXPECT_EQ(initials(QStringLiteral("ann bell")), QStringLiteral("AB"));
    EXPECT_EQ(initials(QStringLiteral("  Ann   de  Bell ")), QStringLiteral("AD"));
}

TEST(Initials, OfOneWordIsItsFirst) {
    EXPECT_EQ(initials(QStringLiteral("ann")), QStringLiteral("A"));
    EXPECT_EQ(initials(QStringLiteral("+4917")), QStringLiteral("+"));
    EXPECT_EQ(initials(QStringLiteral("ann\tbell")), QStringLiteral("A")) << "only blanks part words";
}

TEST(Initials, OfOneWordBehindABlankIsTheBlank) {
    EXPECT_EQ(initials(QStringLiteral(" ann")), QStringLiteral(" "));
    EXPECT_EQ(initials(QStringLiteral("  ")), QStringLiteral(" "));
}

TEST(Initials, OfANumberInGroupsAreThoseOfTheFirstTwo) {
    EXPECT_EQ(initials(QStringLiteral("+49 170 12")), QStringLiteral("+1"));
}

TEST(Initials, OfNothingIsAQuestionMark) {
    EXPECT_EQ(initials(QString()), QStringLiteral("?"));
}

TEST(Initials, AreWholeCharacters) {
    EXPECT_EQ(initials(QStringLiteral("e\u0301mile zola")), QStringLiteral("E\u0301Z"));
    EXPECT_EQ(initials(QStringLiteral("👩‍👧 🇫🇷x")), QStringLiteral("👩‍👧🇫🇷"));
}

TEST(Initials, MayGrowInUpperCase) {
    EXPECT_EQ(initials(QStringLiteral("ßeta")), QStringLiteral("SS"));
}

TEST(WithoutLastCharacter, TakesOneAsAReaderSeesIt) {
    EXPECT_EQ(withoutLastCharacter(QStringLiteral("12#")), QStringLiteral("12"));
    EXPECT_EQ(withoutLastCharacter(QStringLiteral("1👩‍👧")), QStringLiteral("1"));
    EXPECT_EQ(withoutLastCharacter(QString()), QString());
}

TEST(Beginning, OfAShortTextIsAllOfIt) {
    EXPECT_EQ(beginning(QStringLiteral("abc"), 3), QStringLiteral("abc"));
    EXPECT_EQ(beginning(QString(), 3), QString());
}

TEST(Beginning, EndsBetweenTwoCharacters) {
    EXPECT_EQ(beginning(QStringLiteral("abcd"), 3), QStringLiteral("abc"));
    EXPECT_EQ(beginning(QStringLiteral("ab👩‍👧"), 3), QStringLiteral("ab"));
    EXPECT_EQ(beginning(QStringLiteral("abe\u0301f"), 3), QStringLiteral("ab"));
}

TEST(Beginning, HasTheFirstCharacterHoweverLongItIs) {
    EXPECT_EQ(beginning(QStringLiteral("👩‍👧ab"), 3), QStringLiteral("👩‍👧"));
}

TEST(Beginning, OfACharacterWithoutEndComesToAnEnd) {
    const auto marks = QStringLiteral("a") + QString(100'000, QChar(0x0301));
    EXPECT_LT(beginning(marks, 300).size(), 400);
}
