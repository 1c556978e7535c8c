#include "TestWindow.h"

#include <gmock/gmock.h>

using namespace brenvale;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::Not;

namespace {

struct CallsTab : testing::Test, TestWindow {
    void open() {
        show(SettingsView::CallTab);
        (void)takeSent();
    }

    std::string number() { return view.dialpadNumber().toStdString(); }
};

CallRecord call(const char* number, const char* name, qint64 type = 1) {
    return {.number = QString::fromUtf8(number), .name = QString::fromUtf8(name), .date = 1, .type = type};
}

} // namespace

TEST_F(CallsTab, WhatIsTypedIsDialledAsSoonAsTheTabShows) {
    open();
    type(QStringLiteral("01*#"));
    EXPECT_EQ(number(), "01*#");
    EXPECT_TRUE(shows(QStringLiteral("01*#")));
}

TEST_F(CallsTab, WhatIsTypedIsDialledAfterAClickOnTheTab) {
    show(SettingsView::SmsTab);
    click(*item(QAccessible::ListItem, QStringLiteral("Call")));
    type(QStringLiteral("12"));
    EXPECT_EQ(number(), "12");
}

TEST_F(CallsTab, TheSidebarKeepsTheKeyboardOfWhoWalksThroughIt) {
    show(SettingsView::SmsTab);
    focus("Tabs");
    type(Qt::Key_Up);
    ASSERT_EQ(view.selectedTab(), SettingsView::CallTab);
    type(QStringLiteral("12"));
    EXPECT_EQ(number(), "12") << "the pad takes what the sidebar does not want";
    type(Qt::Key_Return);
    EXPECT_THAT(takeCommands(), Not(Contains("make_call"))) << "a call is placed from the pad alone";
    type(Qt::Key_Down);
    EXPECT_EQ(view.selectedTab(), SettingsView::SmsTab);
}

TEST_F(CallsTab, LettersAndThePlusAreNotDialled) {
    open();
    type(QStringLiteral("a+ 1"));
    EXPECT_EQ(number(), "1");
}

TEST_F(CallsTab, BothDeleteKeysTakeTheLastDigit) {
    open();
    type(QStringLiteral("123"));
    type(Qt::Key_Backspace);
    type(Qt::Key_Delete);
    EXPECT_EQ(number(), "1");
}

TEST_F(CallsTab, ReturnCallsAndKeepsTheNumber) {
    open();
    type(Qt::Key_Return);
    EXPECT_THAT(takeCommands(), IsEmpty()) << "there is no number yet";
    type(QStringLiteral("12"));
    type(Qt::Key_Return);
    EXPECT_THAT(takeCommands(), ElementsAre("make_call"));
    EXPECT_EQ(number(), "12");
}

TEST_F(CallsTab, KeysTypeTheirMainText) {
    open();
    for (const auto* key : {"1", "0", "*", "#"}) {
        press(QString::fromUtf8(key));
    }
    click(*item(QAccessible::Button, QStringLiteral("5")));
    EXPECT_EQ(number(), "10*#5");
}

TEST_F(CallsTab, AClickOnAKeyLeavesTheKeyboardToThePad) {
    open();
    click(*item(QAccessible::Button, QStringLiteral("5")));
    type(Qt::Key_Return);
    EXPECT_THAT(takeCommands(), ElementsAre("make_call"));
}

TEST_F(CallsTab, TypingGoesOnFromAnyOfItsButtons) {
    open();
    focus("1");
    type(QStringLiteral("7"));
    type(Qt::Key_Space);
    EXPECT_EQ(number(), "71") << "Space presses the key that has the keyboard";
    type(Qt::Key_Return);
    EXPECT_THAT(takeCommands(), ElementsAre("make_call"));
}

TEST_F(CallsTab, WithoutANumberNothingCanBeCalledOrDeleted) {
    open();
    EXPECT_FALSE(item(QAccessible::Button, QStringLiteral("Call"))->isEnabled());
    EXPECT_EQ(item(QAccessible::Button, QStringLiteral("Delete digit")), nullptr);
    type(QStringLiteral("1"));
    EXPECT_TRUE(item(QAccessible::Button, QStringLiteral("Call"))->isEnabled());
    EXPECT_NE(item(QAccessible::Button, QStringLiteral("Delete digit")), nullptr);
}

TEST_F(CallsTab, TheKeyboardStaysWhenTheLastDigitIsDeleted) {
    open();
    type(QStringLiteral("1"));
    press(QStringLiteral("Delete digit"));
    EXPECT_EQ(number(), "");
    type(QStringLiteral("2"));
    focus("Delete digit");
    type(Qt::Key_Space);
    EXPECT_EQ(number(), "");
    type(QStringLiteral("3"));
    EXPECT_EQ(number(), "3");
}

TEST_F(CallsTab, TheCallButtonCalls) {
    open();
    type(QStringLiteral("12"));
    press(QStringLiteral("Call"));
    EXPECT_THAT(takeCommands(), ElementsAre("make_call"));
}

TEST_F(CallsTab, TheSimIsChosenWhereThereAreSeveral) {
    open();
    store->availableSIMs.set({{.slot = 0}});
    settle();
    EXPECT_THAT(names(QAccessible::RadioButton), IsEmpty());
    store->availableSIMs.set({{.slot = 0}, {.slot = 1}, {.slot = 2}});
    settle();
    EXPECT_THAT(names(QAccessible::RadioButton), ElementsAre("SIM 1", "SIM 2"));
    click(*item(QAccessible::RadioButton, QStringLiteral("SIM 2")));
    EXPECT_EQ(view.selectedSimSlot(), 1);
    EXPECT_TRUE(find(QAccessible::RadioButton, QStringLiteral("SIM 2"))->state().checked);
}

TEST_F(CallsTab, ArrowsChooseTheSim) {
    open();
    store->availableSIMs.set({{.slot = 0}, {.slot = 1}});
    settle();
    focus("SIM");
    type(Qt::Key_Right);
    EXPECT_EQ(view.selectedSimSlot(), 1);
    type(Qt::Key_Right);
    EXPECT_EQ(view.selectedSimSlot(), 1);
    type(Qt::Key_Left);
    EXPECT_EQ(view.selectedSimSlot(), 0);
}

TEST_F(CallsTab, WithoutCallsItSaysSo) {
    open();
    EXPECT_TRUE(shows(QStringLiteral("No recent calls")));
    reportCalls({call("12", "Ann")});
    settle();
    EXPECT_FALSE(shows(QStringLiteral("No recent calls")));
}

TEST_F(CallsTab, ARowSaysWhatItShows) {
    reportCalls({call("12", "Ann", 3), call("34", "", 2), call("56", "Bob")});
    open();
    EXPECT_THAT(names(QAccessible::Button),
                IsSupersetOf({"Missed call, Ann, 12, 1 Jan 1970", "Outgoing call, 34, 34, 1 Jan 1970",
                              "Incoming call, Bob, 56, 1 Jan 1970"}));
}

TEST_F(CallsTab, AClickOnARowCallsAgain) {
    reportCalls({call("12", "Ann", 3)});
    open();
    click(*itemsOf("CallRow_QMLTYPE").first());
    EXPECT_EQ(number(), "12");
    EXPECT_THAT(takeCommands(), ElementsAre("make_call"));
}

TEST_F(CallsTab, RowsAreReachedAndCalledByKeyboard) {
    reportCalls({call("12", "Ann"), call("34", "Bob")});
    open();
    focus("Recent Calls");
    type(Qt::Key_Down);
    type(Qt::Key_Return);
    EXPECT_EQ(number(), "34");
}

TEST_F(CallsTab, TabReachesEveryControl) {
    reportCalls({call("12", "Ann")});
    open();
    type(QStringLiteral("1"));
    EXPECT_THAT(tabOrder(), IsSupersetOf({"1", "2", "3", "4", "5", "6", "7", "8", "9", "*", "0", "#", "Call",
                                          "Delete digit", "Recent Calls", "Tabs"}));
}

TEST_F(CallsTab, AllOfThePadShowsInTheLowestWindow) {
    open();
    quickView().resize(800, 500);
    settle();
    const auto* button = item(QAccessible::Button, QStringLiteral("Call"));
    EXPECT_LE(button->mapToScene(QPointF(0, button->height())).y(), 500);
}
