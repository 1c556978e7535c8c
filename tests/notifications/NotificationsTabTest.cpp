#include "notifications/NotificationsTab.h"
#include "fakes/TestPhone.h"
#include "messages/ContactNames.h"

#include <gmock/gmock.h>

using namespace brenvale;
using testing::ElementsAre;

namespace {

struct Notifications : testing::Test, TestPhone {
    QString add(const char* app, const char* title) {
        store->add({.id = QUuid::createUuid(),
                    .app = QString::fromUtf8(app),
                    .title = QString::fromUtf8(title),
                    .key = QStringLiteral("phone's key")});
        return shown(NotifListModel::RowIdRole);
    }

    /// What the newest row shows.
    [[nodiscard]] QString shown(int role) { return tab.items()->index(0).data(role).toString(); }

    ContactNames names;
    NotificationsTab tab{*store, *server, names};
};

using NotificationRow = Notifications;
using ReplyLine = Notifications;

} // namespace

TEST_F(Notifications, CountsItsRows) {
    const auto told = countSignals(tab, &NotificationsTab::notificationCountTextChanged);
    EXPECT_EQ(tab.notificationCountText(), QStringLiteral("0 notifications"));
    add("Chat", "Ann");
    EXPECT_EQ(tab.notificationCountText(), QStringLiteral("1 notification"));
    add("Chat", "Ann");
    EXPECT_EQ(tab.notificationCountText(), QStringLiteral("2 notifications"));
    EXPECT_EQ(*told, 2);
}

TEST_F(Notifications, ClearsItsOwnListAlone) {
    add("Chat", "Ann");
    store->addClipboard(QStringLiteral("one"));
    tab.clearNotifications();
    EXPECT_EQ(tab.items()->count(), 0);
    EXPECT_EQ(store->clipboardHistory.get().size(), 1);
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
    names.setCallLog({{.number = QStringLiteral("2025550123"), .name = QStringLiteral("Ann")}});
    add("Messages", "+1 202 555 0123");
    EXPECT_EQ(shown(NotifListModel::ShownTitleRole), QStringLiteral("Ann"));
    EXPECT_EQ(shown(NotifListModel::TitleRole), QStringLiteral("+1 202 555 0123"));
}

TEST_F(NotificationRow, IsShownAfreshWhenTheNamesOrTheDayMayHaveChanged) {
    add("Messages", "1");
    std::vector<std::string> changes;
    recordChanges(*tab.items(), changes);
    names.setCallLog({{.number = QStringLiteral("1"), .name = QStringLiteral("Ann")}});
    tab.refresh();
    EXPECT_THAT(changes, ElementsAre("change 0-0"));
    EXPECT_EQ(shown(NotifListModel::ShownTitleRole), QStringLiteral("Ann"));
}

TEST_F(ReplyLine, IsOpenInOneRow) {
    const auto first = add("Chat", "Ann");
    const auto second = add("Chat", "Bob");
    ASSERT_NE(first, second);
    EXPECT_EQ(tab.replyingTo(), QString());
    tab.openReply(first);
    EXPECT_EQ(tab.replyingTo(), first);
    tab.openReply(second);
    EXPECT_EQ(tab.replyingTo(), second);
}

TEST_F(ReplyLine, SendsTheRowsIdentityAndCloses) {
    connect();
    const auto row = add("Chat", "Ann");
    ASSERT_EQ(row, store->items.get()[0].id.toString(QUuid::WithoutBraces).toUpper());
    tab.openReply(row);
    tab.setReplyText(QStringLiteral("Yes"));
    tab.sendReply(row);
    EXPECT_THAT(takeSent(), ElementsAre(QByteArray(R"({"action":"reply","key":")") + row.toUtf8() +
                                        R"(","message":"Yes"})"))
        << "not the phone's key";
    EXPECT_EQ(tab.replyingTo(), QString());
    EXPECT_EQ(tab.replyText(), QString());
}

TEST_F(ReplyLine, SendsAnEmptyDraftToo) {
    connect();
    const auto row = add("Chat", "Ann");
    tab.openReply(row);
    tab.sendReply(row);
    EXPECT_EQ(takeSent().size(), 1U);
}

TEST_F(ReplyLine, CancellingKeepsTheDraftForTheNextRow) {
    const auto first = add("Chat", "Ann");
    const auto second = add("Chat", "Bob");
    tab.openReply(first);
    tab.setReplyText(QStringLiteral("Yes"));
    tab.cancelReply();
    EXPECT_EQ(tab.replyingTo(), QString());
    tab.openReply(second);
    EXPECT_EQ(tab.replyText(), QStringLiteral("Yes"));
}

TEST_F(ReplyLine, OfARowThatIsGoneMatchesNone) {
    const auto row = add("Chat", "Ann");
    tab.openReply(row);
    tab.clearNotifications();
    EXPECT_EQ(tab.replyingTo(), row);
    EXPECT_NE(add("Chat", "Ann"), row);
}
