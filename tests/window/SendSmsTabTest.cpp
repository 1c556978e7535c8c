#include "TestWindow.h"
#include "fakes/SmsRecords.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QTest>

#include <gmock/gmock.h>

using namespace brenvale;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::Not;

namespace {

struct Messages : testing::Test, TestWindow {
    void open() {
        show(Tab::sms);
        (void)takeSent();
    }

    void openThread(const char* address) {
        view.sendSmsTab()->openConversation(QString::fromUtf8(address));
        open();
    }

    QQuickItem& field(const char* name) { return *item(QAccessible::EditableText, QString::fromUtf8(name)); }
};

} // namespace

TEST_F(Messages, AsksForBothLogsEachTimeItComesOnScreen) {
    show(Tab::sms);
    (void)takeSent();
    view.setSelectedTab(Tab::info);
    view.setSelectedTab(Tab::sms);
    EXPECT_THAT(takeCommands(), ElementsAre("get_sms_history", "get_call_history"));
}

TEST_F(Messages, SaysThatThereIsNothingYet) {
    open();
    EXPECT_TRUE(shows(QStringLiteral("No Messages")));
    EXPECT_TRUE(shows(QStringLiteral("Select a conversation or search for a contact to begin.")));
    reportSms({sms("1", 1, "Hi")});
    settle();
    EXPECT_FALSE(shows(QStringLiteral("No Messages")));
}

TEST_F(Messages, TheRefreshButtonAsksForMessagesOnly) {
    open();
    press(QStringLiteral("Refresh messages"));
    EXPECT_THAT(takeCommands(), ElementsAre("get_sms_history"));
}

TEST_F(Messages, AClickOpensAConversationAndTheAnswerCanBeTyped) {
    reportSms({sms("+1 2", 1, "Hi")});
    open();
    click(*itemsOf("ConversationRow_QMLTYPE").first());
    EXPECT_EQ(view.sendSmsTab()->activeRecipientText(), QStringLiteral("+1 2"));
    EXPECT_FALSE(shows(QStringLiteral("Select a conversation or search for a contact to begin.")));
    type(QStringLiteral("yes"));
    EXPECT_EQ(view.sendSmsTab()->chatText(), QStringLiteral("yes"));
}

TEST_F(Messages, ConversationsAreReachedAndOpenedByKeyboard) {
    reportSms({sms("1", 2, "Hi"), sms("2", 1, "Ho")});
    open();
    focus("Conversations");
    type(Qt::Key_Down);
    type(Qt::Key_Return);
    EXPECT_EQ(view.sendSmsTab()->activeRecipientText(), QStringLiteral("2"));
}

TEST_F(Messages, ANumberThatIsTypedCanBeWrittenTo) {
    open();
    click(field("To: Search or type number…"));
    type(QStringLiteral("+12"));
    press(QStringLiteral("New message to +12"));
    EXPECT_EQ(view.sendSmsTab()->activeRecipientText(), QStringLiteral("+12"));
    EXPECT_EQ(view.sendSmsTab()->contactQuery(), QString());
    EXPECT_TRUE(shows(QStringLiteral("New Conversation")));
    EXPECT_EQ(find(QAccessible::Button, QStringLiteral("New message to +12")), nullptr);
}

TEST_F(Messages, TheNumberIsTheFirstRowOfTheList) {
    reportSms({sms("12", 2, "Hi"), sms("13", 1, "Ho")});
    open();
    click(field("To: Search or type number…"));
    type(QStringLiteral("1"));
    focus("New message to 1");
    type(Qt::Key_Down);
    EXPECT_TRUE(hasFocus("Conversations"));
    EXPECT_FALSE(hasFocus("New message to 1"));
    type(Qt::Key_Down);
    type(Qt::Key_Up);
    EXPECT_FALSE(hasFocus("New message to 1")) << "that is the first conversation";
    type(Qt::Key_Up);
    EXPECT_TRUE(hasFocus("New message to 1"));
    EXPECT_LT(item(QAccessible::Button, QStringLiteral("New message to 1"))->mapToScene({}).y(),
              itemsOf("ConversationRow_QMLTYPE").first()->mapToScene({}).y());
    type(Qt::Key_Return);
    EXPECT_EQ(view.sendSmsTab()->activeRecipientText(), QStringLiteral("1"));
    EXPECT_TRUE(hasFocus("Text Message"));
}

TEST_F(Messages, ControlAndFLeadToTheSearchFromAnyTab) {
    show(Tab::info);
    type(Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(view.selectedTab(), Tab::sms);
    type(QStringLiteral("ab"));
    EXPECT_EQ(view.sendSmsTab()->contactQuery(), QStringLiteral("ab"));
    type(Qt::Key_Escape);
    EXPECT_EQ(view.sendSmsTab()->contactQuery(), QString());
    EXPECT_TRUE(hasFocus("To: Search or type number…"));
}

TEST_F(Messages, TheOpenThreadIsWhereOneTypesWhenTheTabShows) {
    openThread("1");
    type(QStringLiteral("yes"));
    EXPECT_EQ(view.sendSmsTab()->chatText(), QStringLiteral("yes"));
}

TEST_F(Messages, TheSearchIsClearedByItsButton) {
    reportSms({sms("1", 1, "Hi")});
    open();
    EXPECT_EQ(find(QAccessible::Button, QStringLiteral("Clear search")), nullptr);
    view.sendSmsTab()->setContactQuery(QStringLiteral("abc"));
    settle();
    EXPECT_THAT(itemsOf("ConversationRow_QMLTYPE"), IsEmpty());
    press(QStringLiteral("Clear search"));
    EXPECT_EQ(view.sendSmsTab()->contactQuery(), QString());
    EXPECT_EQ(itemsOf("ConversationRow_QMLTYPE").size(), 1);
}

TEST_F(Messages, ReturnSendsTheDraft) {
    openThread("+1 2");
    click(field("Text Message"));
    type(QStringLiteral("yes"));
    type(Qt::Key_Return);
    EXPECT_THAT(takeCommands(), ElementsAre("send_sms"));
    EXPECT_EQ(field("Text Message").property("text").toString(), QString());
    EXPECT_TRUE(shows(QStringLiteral("yes"))) << "the bubble shows at once";
}

TEST_F(Messages, TheSendButtonSendsTheDraftAndNothingElse) {
    openThread("1");
    EXPECT_FALSE(item(QAccessible::Button, QStringLiteral("Send message"))->isEnabled());
    view.sendSmsTab()->setChatText(QStringLiteral(" "));
    settle();
    press(QStringLiteral("Send message"));
    EXPECT_THAT(takeCommands(), ElementsAre("send_sms"));
}

TEST_F(Messages, TheDraftStaysWhenAnotherThreadIsOpened) {
    openThread("1");
    view.sendSmsTab()->setChatText(QStringLiteral("draft"));
    view.sendSmsTab()->openConversation(QStringLiteral("2"));
    settle();
    EXPECT_EQ(field("Text Message").property("text").toString(), QStringLiteral("draft"));
}

TEST_F(Messages, TheHeadShowsTheAddressBelowANameOnly) {
    reportCalls({{.number = QStringLiteral("12"), .name = QStringLiteral("Ann")}});
    openThread("1 2");
    EXPECT_TRUE(shows(QStringLiteral("Ann")));
    EXPECT_TRUE(shows(QStringLiteral("1 2")));
    view.sendSmsTab()->openConversation(QStringLiteral("34"));
    settle();
    EXPECT_THAT(names(QAccessible::StaticText), Not(Contains("34")));
}

TEST_F(Messages, TheSimIsChosenFromAMenu) {
    openThread("1");
    EXPECT_TRUE(shows(QStringLiteral("No SIM connected")));
    store->availableSIMs.set(
        {{.slot = 0, .carrier = QStringLiteral("A")}, {.slot = 4, .carrier = QStringLiteral("B")}});
    settle();
    EXPECT_FALSE(shows(QStringLiteral("No SIM connected")));
    auto* picker = item(QAccessible::ComboBox, QStringLiteral("SIM:"));
    EXPECT_EQ(picker->property("displayText").toString(), QStringLiteral("A"));
    click(*picker);
    type(Qt::Key_Down);
    type(Qt::Key_Return);
    EXPECT_EQ(view.callsTab()->sims()->selectedSimSlot(), 4);
    EXPECT_EQ(picker->property("displayText").toString(), QStringLiteral("B"));
    store->availableSIMs.set(
        {{.slot = 2, .carrier = QStringLiteral("C")}, {.slot = 4, .carrier = QStringLiteral("B")}});
    settle();
    EXPECT_EQ(picker->property("displayText").toString(), QStringLiteral("C"));
}

TEST_F(Messages, TheTextOfABubbleIsMarkedByThePointerAndCopied) {
    reportSms({sms("1", 1, "Platform nine")});
    openThread("1");
    const auto& bubble = *item(QAccessible::EditableText, QStringLiteral("Platform nine"));
    const auto middle = bubble.mapToScene(QPointF(1, bubble.height() / 2)).toPoint();
    QTest::mousePress(&quickView(), Qt::LeftButton, {}, middle);
    QTest::mouseMove(&quickView(), middle + QPoint(60, 0));
    QTest::mouseMove(&quickView(), middle + QPoint(static_cast<int>(bubble.width()) + 4, 0));
    QTest::mouseRelease(&quickView(), Qt::LeftButton, {},
                        middle + QPoint(static_cast<int>(bubble.width()) + 4, 0));
    type(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("Platform nine"));
}

TEST_F(Messages, AMessageIsCopiedByKeyboard) {
    reportSms({sms("1", 1, "one"), sms("1", 2, "two")});
    openThread("1");
    focus("Messages");
    type(Qt::Key_Up);
    type(Qt::Key_C, Qt::ControlModifier);
    EXPECT_THAT(fake.pasteboard.calls, ElementsAre("clear", "set:one"));
}

TEST_F(Messages, WhatLooksLikeMarkupIsShownAsItIs) {
    reportSms({sms("1", 1, "<b>x</b> https://example.org")});
    openThread("1");
    EXPECT_TRUE(shows(QStringLiteral("<b>x</b> https://example.org")));
}

TEST_F(Messages, TabReachesEveryControl) {
    reportSms({sms("1", 1, "Hi")});
    openThread("1");
    store->availableSIMs.set({{.slot = 0, .carrier = QStringLiteral("A")}});
    view.sendSmsTab()->setContactQuery(QStringLiteral("1"));
    view.sendSmsTab()->setChatText(QStringLiteral("draft"));
    settle();
    EXPECT_THAT(tabOrder(), IsSupersetOf({"Tabs", "Refresh messages", "To: Search or type number…",
                                          "Clear search", "New message to 1", "Conversations",
                                          "SIM:", "Messages", "Text Message", "Send message"}));
}
