#include "fakes/TestView.h"

#include <gmock/gmock.h>

using namespace brenvale;
using testing::ElementsAre;

namespace {

struct NotificationsTab : testing::Test, TestView {
    QString add(const char* app, const char* title) {
        store->add({.id = QUuid::createUuid(),
                    .app = QString::fromUtf8(app),
                    .title = QString::fromUtf8(title),
                    .key = QStringLiteral("phone's key")});
        return shown(NotifListModel::RowIdRole);
    }

    /// What the newest row shows.
    [[nodiscard]] QString shown(int role) { return view.items()->index(0).data(role).toString(); }
};

using NotificationRow = NotificationsTab;
using ReplyLine = NotificationsTab;

} // namespace

TEST_F(NotificationsTab, CountsItsRows) {
    const auto told = countSignals(view, &SettingsView::notificationCountTextChanged);
    EXPECT_EQ(view.notificationCountText(), QStringLiteral("0 notifications"));
    add("Chat", "Ann");
    EXPECT_EQ(view.notificationCountText(), QStringLiteral("1 notification"));
    add("Chat", "Ann");
    EXPECT_EQ(view.notificationCountText(), QStringLiteral("2 notifications"));
    EXPECT_EQ(*told, 2);
}

TEST_F(NotificationsTab, ClearsItsOwnListAlone) {
    add("Chat", "Ann");
    store->addClipboard(QStringLiteral("one"));
    view.clearNotifications();
    EXPECT_EQ(view.items()->count(), 0);
    EXPECT_EQ(view.clipboardHistory()->count(), 1);
}

TEST_F(NotificationRow, ItsBadgeIsACapitalOfTheAppElseTheTitleElseAQuestionMark) {
    add("chat", "ann");
    EXPECT_EQ(shown(NotifListModel::BadgeRole), QStringLiteral("C"));
    add("", "ann");
    EXPECT_EQ(shown(NotifListModel::BadgeRole), QStringLiteral("A"));
    add("", "");
    EXPECT_EQ(shown(NotifListModel::BadgeRole), QStringLiteral("?"));
    add("e\u0301tude", "");
    EXPECT_EQ(shown(NotifListModel::BadgeRole), QStringLiteral("E\u0301"));
}

TEST_F(NotificationRow, WithoutAnAppIsANotification) {
    add("", "");
    EXPECT_EQ(shown(NotifListModel::ShownAppRole), QStringLiteral("Notification"));
    EXPECT_EQ(shown(NotifListModel::ShownTitleRole), QString());
    EXPECT_EQ(shown(NotifListModel::BodyRole), QString());
    EXPECT_FALSE(shown(NotifListModel::TimeTextRole).isEmpty());
    add("Chat", "");
    EXPECT_EQ(shown(NotifListModel::ShownAppRole), QStringLiteral("Chat"));
}

TEST_F(NotificationRow, ANumberAsItsTitleHasTheNameOfTheCallLog) {
    reportCalls({{.number = QStringLiteral("2025550123"), .name = QStringLiteral("Ann")}});
    add("Messages", "+1 202 555 0123");
    EXPECT_EQ(shown(NotifListModel::ShownTitleRole), QStringLiteral("Ann"));
    EXPECT_EQ(shown(NotifListModel::TitleRole), QStringLiteral("+1 202 555 0123"));
}

TEST_F(ReplyLine, IsOpenInOneRow) {
    const auto first = add("Chat", "Ann");
    const auto second = add("Chat", "Bob");
    ASSERT_NE(first, second);
    EXPECT_EQ(view.replyingTo(), QString());
    view.openReply(first);
    EXPECT_EQ(view.replyingTo(), first);
    view.openReply(second);
    EXPECT_EQ(view.replyingTo(), second);
}

TEST_F(ReplyLine, SendsTheRowsIdentityAndCloses) {
    connect();
    const auto row = add("Chat", "Ann");
    ASSERT_EQ(row, store->items.get()[0].id.toString(QUuid::WithoutBraces).toUpper());
    view.openReply(row);
    view.setReplyText(QStringLiteral("Yes"));
    view.sendReply(row);
    EXPECT_THAT(takeSent(), ElementsAre(QByteArray(R"({"action":"reply","key":")") + row.toUtf8() +
                                        R"(","message":"Yes"})"))
        << "not the phone's key";
    EXPECT_EQ(view.replyingTo(), QString());
    EXPECT_EQ(view.replyText(), QString());
}

TEST_F(ReplyLine, SendsAnEmptyDraftToo) {
    connect();
    const auto row = add("Chat", "Ann");
    view.openReply(row);
    view.sendReply(row);
    EXPECT_EQ(takeSent().size(), 1U);
}

TEST_F(ReplyLine, CancellingKeepsTheDraftForTheNextRow) {
    const auto first = add("Chat", "Ann");
    const auto second = add("Chat", "Bob");
    view.openReply(first);
    view.setReplyText(QStringLiteral("Yes"));
    view.cancelReply();
    EXPECT_EQ(view.replyingTo(), QString());
    view.openReply(second);
    EXPECT_EQ(view.replyText(), QStringLiteral("Yes"));
}

TEST_F(ReplyLine, OfARowThatIsGoneMatchesNone) {
    const auto row = add("Chat", "Ann");
    view.openReply(row);
    view.clearNotifications();
    EXPECT_EQ(view.replyingTo(), row);
    EXPECT_NE(add("Chat", "Ann"), row);
}
