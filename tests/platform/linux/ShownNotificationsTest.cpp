#include "platform/linux/ShownNotifications.h"

#include <gtest/gtest.h>

using namespace brenvale;

namespace {

NotificationRequest request(const QString& identifier) {
    return {.identifier = identifier, .content = {.title = QStringLiteral("title of ") + identifier}};
}

} // namespace

TEST(ShownNotifications, AreFoundByIdentifierAndByNumber) {
    ShownNotifications shown;
    shown.insert(request(QStringLiteral("a")), 7);
    EXPECT_EQ(shown.serverId(QStringLiteral("a")), 7U);
    ASSERT_NE(shown.find(7), nullptr);
    EXPECT_EQ(shown.find(7)->identifier.text(), QStringLiteral("a"));
    EXPECT_EQ(shown.find(7)->content.title, QStringLiteral("title of a"));
    EXPECT_EQ(shown.serverId(QStringLiteral("b")), 0U);
    EXPECT_EQ(shown.find(8), nullptr);
}

TEST(ShownNotifications, AClosedOneIsNotReplacedButCanStillBeAnswered) {
    ShownNotifications shown;
    shown.insert(request(QStringLiteral("a")), 7);
    shown.closed(7);
    EXPECT_EQ(shown.serverId(QStringLiteral("a")), 0U);
    EXPECT_NE(shown.find(7), nullptr);
}

TEST(ShownNotifications, ClosingTheOldNumberLeavesTheNewOne) {
    ShownNotifications shown;
    shown.insert(request(QStringLiteral("a")), 7);
    shown.insert(request(QStringLiteral("a")), 8);
    shown.closed(7);
    EXPECT_EQ(shown.serverId(QStringLiteral("a")), 8U);
}

TEST(ShownNotifications, ANumberThatIsUsedAgainBelongsToTheNewOne) {
    ShownNotifications shown;
    shown.insert(request(QStringLiteral("a")), 7);
    shown.insert(request(QStringLiteral("b")), 7);
    EXPECT_EQ(shown.serverId(QStringLiteral("a")), 0U);
    EXPECT_EQ(shown.serverId(QStringLiteral("b")), 7U);
    EXPECT_EQ(shown.find(7)->identifier.text(), QStringLiteral("b"));
}

TEST(ShownNotifications, OnlyTheLatestThousandAreKept) {
    ShownNotifications shown;
    for (uint number = 1; number <= 1001; ++number) {
        shown.insert(request(QString::number(number)), number);
    }
    EXPECT_EQ(shown.find(1), nullptr);
    EXPECT_EQ(shown.serverId(QStringLiteral("1")), 0U);
    EXPECT_NE(shown.find(2), nullptr);
}

TEST(ShownNotifications, HugeOnesPushOutHugeOnesAlone) {
    ShownNotifications shown;
    const QString huge(10 << 20, u'x');
    shown.insert(request(QStringLiteral("small")), 1);
    shown.insert(request(huge + u'1'), 2);
    shown.insert(request(huge + u'2'), 3);
    EXPECT_NE(shown.find(1), nullptr);
    EXPECT_EQ(shown.find(2), nullptr);
    ASSERT_NE(shown.find(3), nullptr);
    EXPECT_EQ(shown.find(3)->identifier.text(), huge + u'2') << "what the phone is told with an answer";
    EXPECT_LT(shown.find(3)->content.title.size(), 1000);
}

TEST(ShownNotifications, ANewServerStartsFromNothing) {
    ShownNotifications shown;
    shown.insert(request(QStringLiteral("a")), 7);
    shown.clear();
    EXPECT_EQ(shown.serverId(QStringLiteral("a")), 0U);
    EXPECT_EQ(shown.find(7), nullptr);
}
