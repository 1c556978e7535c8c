#include "notifications/RecentBodies.h"

#include <gtest/gtest.h>

using brenvale::RecentBodies;

TEST(BodyKey, LosesBlanksAtItsEndsButNoLineBreaks) {
    EXPECT_EQ(RecentBodies::bodyKey(QStringLiteral(" \t\u00a0\u2003a b\u3000 ")), QStringLiteral("a b"));
    EXPECT_EQ(RecentBodies::bodyKey(QStringLiteral("\na\r\n")), QStringLiteral("\na\r\n"));
    EXPECT_EQ(RecentBodies::bodyKey(QStringLiteral(" \n a")), QStringLiteral("\n a"));
    EXPECT_EQ(RecentBodies::bodyKey(QStringLiteral("  ")), QString());
    EXPECT_EQ(RecentBodies::bodyKey(QStringLiteral("\u200ba")), QStringLiteral("\u200ba"))
        << "no space separator";
}

TEST(RecentBodies, ABodyIsARepeatForLessThanThreeSeconds) {
    RecentBodies bodies;
    bodies.remember(QStringLiteral("a"), QStringLiteral("id"), 100);
    EXPECT_EQ(bodies.repeatedIdentifier(QStringLiteral("a"), 102.999)->text(), QStringLiteral("id"));
    EXPECT_FALSE(bodies.repeatedIdentifier(QStringLiteral("a"), 103));
    EXPECT_FALSE(bodies.repeatedIdentifier(QStringLiteral("b"), 100));
}

TEST(RecentBodies, AClockThatIsSetBackMakesARepeat) {
    RecentBodies bodies;
    bodies.remember(QStringLiteral("a"), QStringLiteral("id"), 100);
    EXPECT_TRUE(bodies.repeatedIdentifier(QStringLiteral("a"), 50));
}

TEST(RecentBodies, TheLatestPostOfABodyCounts) {
    RecentBodies bodies;
    bodies.remember(QStringLiteral("a"), QStringLiteral("first"), 100);
    bodies.remember(QStringLiteral("a"), QStringLiteral("second"), 102);
    EXPECT_EQ(bodies.repeatedIdentifier(QStringLiteral("a"), 104)->text(), QStringLiteral("second"));
    EXPECT_EQ(bodies.size(), 1);
}

TEST(RecentBodies, EntriesAreForgottenAfterThirtySeconds) {
    RecentBodies bodies;
    bodies.remember(QStringLiteral("a"), QStringLiteral("1"), 100);
    bodies.remember(QStringLiteral("b"), QStringLiteral("2"), 129.9);
    EXPECT_EQ(bodies.size(), 2);
    bodies.remember(QStringLiteral("c"), QStringLiteral("3"), 130);
    EXPECT_EQ(bodies.size(), 2);
}

TEST(RecentBodies, AClockThatWasSetBackKeepsNothingElseFromBeingForgotten) {
    RecentBodies bodies;
    bodies.remember(QStringLiteral("ahead"), QStringLiteral("1"), 1000);
    for (int i = 0; i < 100; ++i) {
        bodies.remember(QString::number(i), QStringLiteral("id"), 100 + i);
    }
    EXPECT_EQ(bodies.size(), 31) << "those of 30 seconds, and the one ahead";
    EXPECT_TRUE(bodies.repeatedIdentifier(QStringLiteral("ahead"), 200));
}

TEST(RecentBodies, AFloodIsForgottenAsSoonAsItCannotRepeat) {
    RecentBodies bodies;
    for (int i = 0; i < 5000; ++i) {
        bodies.remember(QString::number(i), QStringLiteral("id"), 100 + (0.01 * i));
    }
    EXPECT_LE(bodies.size(), 1001);
    EXPECT_TRUE(bodies.repeatedIdentifier(QStringLiteral("4999"), 150));
}
