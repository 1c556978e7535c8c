#include "TestWindow.h"

#include <QTest>

#include <gmock/gmock.h>

#include <algorithm>

using namespace brenvale;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::Not;

namespace {

struct Calls : testing::Test, TestWindow {
    void open() {
        show(Tab::call);
        (void)takeSent();
    }

    /// What the display tells assistive technology.
    std::string shownNumber() {
        auto* display = find(QAccessible::EditableText, QStringLiteral("Number"));
        return display == nullptr ? "none" : display->text(QAccessible::Value).toStdString();
    }

    void hold(Qt::Key key) {
        for (const bool isRepeat : {false, true, true, true}) {
            QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, QString(), isRepeat);
            QCoreApplication::sendEvent(&quickView(), &press);
            QKeyEvent release(QEvent::KeyRelease, key, Qt::NoModifier, QString(), isRepeat);
            QCoreApplication::sendEvent(&quickView(), &release);
        }
        QKeyEvent release(QEvent::KeyRelease, key, Qt::NoModifier);
        QCoreApplication::sendEvent(&quickView(), &release);
        settle();
    }

    std::string number() { return view.callsTab()->dialpadNumber().toStdString(); }
};

CallRecord call(const char* number, const char* name, qint64 type = 1) {
    return {.number = QString::fromUtf8(number), .name = QString::fromUtf8(name), .date = 1, .type = type};
}

} // namespace

TEST_F(Calls, WhatIsTypedIsDialledAsSoonAsTheTabShows) {
    open();
    type(QStringLiteral("01*#"));
    EXPECT_EQ(number(), "01*#");
    EXPECT_EQ(shownNumber(), "01*#");
}

TEST_F(Calls, WhatIsTypedIsDialledAfterAClickOnTheTab) {
    show(Tab::sms);
    click(*item(QAccessible::ListItem, QStringLiteral("Call")));
    type(QStringLiteral("12"));
    EXPECT_EQ(number(), "12");
}

TEST_F(Calls, TheSidebarKeepsTheKeyboardOfWhoWalksThroughIt) {
    show(Tab::sms);
    focus("Tabs");
    type(Qt::Key_Up);
    ASSERT_EQ(view.selectedTab(), Tab::call);
    type(QStringLiteral("12"));
    EXPECT_EQ(number(), "12") << "the pad takes what the sidebar does not want";
    EXPECT_TRUE(hasFocus("Number")) << "and typing goes on there";
}

TEST_F(Calls, ReturnInTheSidebarPlacesNoCall) {
    show(Tab::call);
    type(QStringLiteral("12"));
    show(Tab::sms);
    focus("Tabs");
    type(Qt::Key_Up);
    type(Qt::Key_Return);
    EXPECT_THAT(takeCommands(), Not(Contains("make_call")));
    type(Qt::Key_Down);
    EXPECT_EQ(view.selectedTab(), Tab::sms);
}

TEST_F(Calls, ReturnCallsAfterTheSidebarWasHidden) {
    open();
    type(QStringLiteral("12"));
    click(*item(QAccessible::Button, QStringLiteral("Hide Sidebar")));
    type(Qt::Key_Return);
    EXPECT_THAT(takeCommands(), ElementsAre("make_call"));
}

TEST_F(Calls, ThePadHasTheKeyboardAfterEachClickOnItsTab) {
    show(Tab::call);
    click(*item(QAccessible::ListItem, QStringLiteral("Info")));
    click(*item(QAccessible::ListItem, QStringLiteral("Call")));
    type(QStringLiteral("1"));
    type(Qt::Key_Return);
    EXPECT_THAT(takeCommands(), Contains("make_call"));
}

TEST_F(Calls, AHeldKeyPlacesOneCall) {
    reportCalls({call("12", "Ann")});
    for (const auto key : {Qt::Key_Return, Qt::Key_Space}) {
        for (const auto* place : {"Recent Calls", "Call"}) {
            open();
            focus("Number");
            focus(place);
            hold(key);
            EXPECT_EQ(std::ranges::count(takeCommands(), "make_call"), 1) << place << ' ' << key;
        }
    }
}

TEST_F(Calls, AHeldDigitRepeats) {
    open();
    for (const bool isRepeat : {false, true, true}) {
        QKeyEvent press(QEvent::KeyPress, Qt::Key_1, Qt::NoModifier, QStringLiteral("1"), isRepeat);
        QCoreApplication::sendEvent(&quickView(), &press);
    }
    EXPECT_EQ(number(), "111");
}

TEST_F(Calls, ArrowsWalkThroughThePad) {
    open();
    type(QStringLiteral("1"));
    const auto goTo = [this](std::initializer_list<Qt::Key> keys) {
        for (const auto key : keys) {
            type(key);
        }
        return focusPath().front();
    };
    EXPECT_EQ(goTo({Qt::Key_Down}), "1");
    EXPECT_EQ(goTo({Qt::Key_Right, Qt::Key_Down}), "5");
    EXPECT_EQ(goTo({Qt::Key_Right, Qt::Key_Right}), "6") << "the row ends there";
    EXPECT_EQ(goTo({Qt::Key_Down, Qt::Key_Down, Qt::Key_Down}), "Delete digit");
    EXPECT_EQ(goTo({Qt::Key_Left}), "Call");
    EXPECT_EQ(goTo({Qt::Key_Up, Qt::Key_Left, Qt::Key_Down}), "Call") << "the nearest below";
    EXPECT_EQ(goTo({Qt::Key_Up, Qt::Key_Up, Qt::Key_Up, Qt::Key_Up, Qt::Key_Up}), "Number");
}

TEST_F(Calls, WhatIsTypedIsTheDisplaysValue) {
    open();
    EXPECT_EQ(shownNumber(), "");
    type(QStringLiteral("12"));
    EXPECT_EQ(shownNumber(), "12");
}

TEST_F(Calls, TheLogScrollsByThePageKeys) {
    QList<CallRecord> log;
    for (int i = 0; i < 100; ++i) {
        log.append(call("12", "Ann"));
    }
    reportCalls(log);
    open();
    auto* list = item(QAccessible::List, QStringLiteral("Recent Calls"));
    type(Qt::Key_PageDown);
    EXPECT_GT(list->property("contentY").toDouble(), 200);
}

TEST_F(Calls, LettersAndThePlusAreNotDialled) {
    open();
    type(QStringLiteral("a+ 1"));
    EXPECT_EQ(number(), "1");
}

TEST_F(Calls, BothDeleteKeysTakeTheLastDigit) {
    open();
    type(QStringLiteral("123"));
    type(Qt::Key_Backspace);
    type(Qt::Key_Delete);
    EXPECT_EQ(number(), "1");
}

TEST_F(Calls, ReturnCallsAndKeepsTheNumber) {
    open();
    type(Qt::Key_Return);
    EXPECT_THAT(takeCommands(), IsEmpty()) << "there is no number yet";
    type(QStringLiteral("12"));
    type(Qt::Key_Return);
    EXPECT_THAT(takeCommands(), ElementsAre("make_call"));
    EXPECT_EQ(number(), "12");
}

TEST_F(Calls, KeysTypeTheirMainText) {
    open();
    for (const auto* key : {"1", "0", "*", "#"}) {
        press(QString::fromUtf8(key));
    }
    click(*item(QAccessible::Button, QStringLiteral("5")));
    EXPECT_EQ(number(), "10*#5");
}

TEST_F(Calls, AClickOnAKeyLeavesTheKeyboardToThePad) {
    open();
    click(*item(QAccessible::Button, QStringLiteral("5")));
    type(Qt::Key_Return);
    EXPECT_THAT(takeCommands(), ElementsAre("make_call"));
}

TEST_F(Calls, TypingGoesOnFromAnyOfItsButtons) {
    open();
    focus("1");
    type(QStringLiteral("7"));
    type(Qt::Key_Space);
    EXPECT_EQ(number(), "71") << "Space presses the key that has the keyboard";
    type(Qt::Key_Return);
    EXPECT_THAT(takeCommands(), ElementsAre("make_call"));
}

TEST_F(Calls, WithoutANumberNothingCanBeCalledOrDeleted) {
    open();
    EXPECT_FALSE(item(QAccessible::Button, QStringLiteral("Call"))->isEnabled());
    EXPECT_EQ(item(QAccessible::Button, QStringLiteral("Delete digit")), nullptr);
    type(QStringLiteral("1"));
    EXPECT_TRUE(item(QAccessible::Button, QStringLiteral("Call"))->isEnabled());
    EXPECT_NE(item(QAccessible::Button, QStringLiteral("Delete digit")), nullptr);
}

TEST_F(Calls, TheKeyboardStaysWhenTheLastDigitIsDeleted) {
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

TEST_F(Calls, AButtonThatCannotBeSeenHasNoTip) {
    open();
    type(QStringLiteral("1"));
    focus("Delete digit");
    EXPECT_TRUE(itemsOf("IconButton_QMLTYPE").last()->property("visualFocus").toBool());
    EXPECT_TRUE(QTest::qWaitFor([this] { return !itemsOf("QQuickPopupItem").isEmpty(); }));
    type(Qt::Key_Backspace);
    EXPECT_TRUE(QTest::qWaitFor([this] { return itemsOf("QQuickPopupItem").isEmpty(); }));
}

TEST_F(Calls, TheCallButtonCalls) {
    open();
    type(QStringLiteral("12"));
    press(QStringLiteral("Call"));
    EXPECT_THAT(takeCommands(), ElementsAre("make_call"));
}

TEST_F(Calls, TheSimIsChosenWhereThereAreSeveral) {
    open();
    store->availableSIMs.set({{.slot = 0}});
    settle();
    EXPECT_THAT(names(QAccessible::RadioButton), IsEmpty());
    store->availableSIMs.set({{.slot = 0}, {.slot = 1}, {.slot = 2}});
    settle();
    EXPECT_THAT(names(QAccessible::RadioButton), ElementsAre("SIM 1", "SIM 2"));
    click(*item(QAccessible::RadioButton, QStringLiteral("SIM 2")));
    EXPECT_EQ(view.callsTab()->sims()->selectedSimSlot(), 1);
    EXPECT_TRUE(find(QAccessible::RadioButton, QStringLiteral("SIM 2"))->state().checked);
}

TEST_F(Calls, ArrowsChooseTheSim) {
    open();
    store->availableSIMs.set({{.slot = 0}, {.slot = 1}});
    settle();
    focus("SIM");
    type(Qt::Key_Right);
    EXPECT_EQ(view.callsTab()->sims()->selectedSimSlot(), 1);
    type(Qt::Key_Right);
    EXPECT_EQ(view.callsTab()->sims()->selectedSimSlot(), 1);
    type(Qt::Key_Left);
    EXPECT_EQ(view.callsTab()->sims()->selectedSimSlot(), 0);
}

TEST_F(Calls, WithoutCallsItSaysSo) {
    open();
    EXPECT_TRUE(shows(QStringLiteral("No recent calls")));
    reportCalls({call("12", "Ann")});
    settle();
    EXPECT_FALSE(shows(QStringLiteral("No recent calls")));
}

TEST_F(Calls, ARowSaysWhatItShows) {
    reportCalls({call("12", "Ann", 3), call("34", "", 2), call("56", "Bob")});
    open();
    EXPECT_THAT(names(QAccessible::Button),
                IsSupersetOf({"Missed call, Ann, 12, 1 Jan 1970", "Outgoing call, 34, 34, 1 Jan 1970",
                              "Incoming call, Bob, 56, 1 Jan 1970"}));
}

TEST_F(Calls, AClickOnARowCallsAgain) {
    reportCalls({call("12", "Ann", 3)});
    open();
    click(*itemsOf("CallRow_QMLTYPE").first());
    EXPECT_EQ(number(), "12");
    EXPECT_THAT(takeCommands(), ElementsAre("make_call"));
}

TEST_F(Calls, RowsAreReachedAndCalledByKeyboard) {
    reportCalls({call("12", "Ann"), call("34", "Bob")});
    open();
    focus("Recent Calls");
    type(Qt::Key_Down);
    type(Qt::Key_Return);
    EXPECT_EQ(number(), "34");
}

TEST_F(Calls, TabReachesEveryControl) {
    reportCalls({call("12", "Ann")});
    open();
    type(QStringLiteral("1"));
    EXPECT_THAT(tabOrder(), IsSupersetOf({"1", "2", "3", "4", "5", "6", "7", "8", "9", "*", "0", "#", "Call",
                                          "Delete digit", "Recent Calls", "Tabs"}));
}

TEST_F(Calls, AllOfThePadShowsInTheLowestWindow) {
    open();
    quickView().resize(800, 500);
    settle();
    const auto* button = item(QAccessible::Button, QStringLiteral("Call"));
    EXPECT_LE(button->mapToScene(QPointF(0, button->height())).y(), 500);
}
