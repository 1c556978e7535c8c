#include "platform/linux/NotificationText.h"

#include <gtest/gtest.h>

using namespace brenvale;

namespace {

NotificationContent content(const QString& subtitle, const QString& body) {
    return {.title = QStringLiteral("<T> & U"), .subtitle = subtitle, .body = body};
}

} // namespace

TEST(NotificationSummary, IsTheTitleWithoutMarkup) {
    EXPECT_EQ(notificationSummary(content({}, {})), QStringLiteral("<T> & U"));
}

TEST(NotificationBody, HasTheSubtitleAsABoldFirstLineWhereThereIsMarkup) {
    EXPECT_EQ(
        notificationBody(content(QStringLiteral("Ann & <Bob>"), QStringLiteral("1 < 2 > \"0\"\nend")), true),
        QStringLiteral("<b>Ann &amp; &lt;Bob&gt;</b>\n1 &lt; 2 &gt; \"0\"\nend"));
}

TEST(NotificationBody, IsPlainWhereThereIsNoMarkup) {
    EXPECT_EQ(notificationBody(content(QStringLiteral("Ann & <Bob>"), QStringLiteral("1 < 2")), false),
              QStringLiteral("Ann & <Bob>\n1 < 2"));
}

TEST(NotificationBody, HasNoEmptyLineWhereAPartIsEmpty) {
    EXPECT_EQ(notificationBody(content({}, QStringLiteral("body")), true), QStringLiteral("body"));
    EXPECT_EQ(notificationBody(content(QStringLiteral("sub"), {}), true), QStringLiteral("<b>sub</b>"));
    EXPECT_EQ(notificationBody(content({}, {}), true), QString());
}

TEST(NotificationBody, LeavesControlCharactersOut) {
    EXPECT_EQ(notificationBody(content({}, QStringLiteral("a\u0001b\tc\nd\u001be\r")), true),
              QStringLiteral("ab\tc\nde"));
}

TEST(NotificationBody, IsCutWhereNoServerWouldShowItAnyMore) {
    const auto emoji = QStringLiteral("😀");
    const auto body = notificationBody(content({}, QStringLiteral("x") + emoji.repeated(50'000)), true);
    EXPECT_LT(body.size(), 11'000);
    EXPECT_TRUE(body.endsWith(emoji + u'…')) << "not in the middle of a character";
}
