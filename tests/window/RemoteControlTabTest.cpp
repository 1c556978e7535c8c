#include "TestWindow.h"

#include <QTest>

#include <gmock/gmock.h>

using namespace brenvale;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsSupersetOf;

namespace {

struct Remote : testing::Test, TestWindow {
    Remote() {
        show(Tab::remote);
        (void)takeSent();
    }

    std::string commandOf(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        type(key, modifiers);
        const auto commands = takeCommands();
        return commands.size() == 1 ? commands.front() : std::to_string(commands.size()) + " commands";
    }

    std::string commandOf(const char* button) {
        press(QString::fromUtf8(button));
        const auto commands = takeCommands();
        return commands.size() == 1 ? commands.front() : std::to_string(commands.size()) + " commands";
    }
};

} // namespace

TEST_F(Remote, KeysAreThoseOfTheTable) {
    EXPECT_EQ(commandOf(Qt::Key_Up), "dpad_up");
    EXPECT_EQ(commandOf(Qt::Key_Left), "dpad_left");
    EXPECT_EQ(commandOf(Qt::Key_Space), "dpad_center");
    EXPECT_EQ(commandOf(Qt::Key_Right), "dpad_right");
    EXPECT_EQ(commandOf(Qt::Key_Down), "dpad_down");
    EXPECT_EQ(commandOf(Qt::Key_Escape), "back");
    EXPECT_EQ(commandOf(Qt::Key_Return), "dpad_center");
    EXPECT_EQ(commandOf(Qt::Key_Tab), "tab_forward");
    EXPECT_EQ(commandOf(Qt::Key_Backtab, Qt::ShiftModifier), "tab_backward");
    EXPECT_EQ(commandOf(Qt::Key_Return, Qt::ControlModifier), "home");
    EXPECT_EQ(commandOf(Qt::Key_Tab, Qt::AltModifier), "recents");
    EXPECT_EQ(commandOf(Qt::Key_N, Qt::ControlModifier), "notifications");
    EXPECT_EQ(commandOf(Qt::Key_Space, Qt::AltModifier), "search");
    EXPECT_EQ(commandOf(Qt::Key_Escape, Qt::ControlModifier), "app_menu");
}

TEST_F(Remote, OtherModifiersAreOtherKeys) {
    type(Qt::Key_Backspace, Qt::ControlModifier);
    type(Qt::Key_N);
    type(Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_THAT(takeCommands(), IsEmpty());
}

TEST_F(Remote, KeysWorkWhateverHasTheKeyboard) {
    type(Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(commandOf(Qt::Key_Space), "dpad_center");
    EXPECT_EQ(commandOf(Qt::Key_Return), "dpad_center");
    EXPECT_EQ(commandOf(Qt::Key_Down), "dpad_down");
}

TEST_F(Remote, EscapeGoesToThePhoneThoughATipIsOpen) {
    focus("Back", Qt::ControlModifier);
    ASSERT_TRUE(QTest::qWaitFor([this] { return !itemsOf("QQuickPopupItem").isEmpty(); }));
    EXPECT_EQ(commandOf(Qt::Key_Escape), "back");
    EXPECT_EQ(commandOf(Qt::Key_Escape), "back");
}

TEST_F(Remote, KeysAreNotThePhonesInOtherTabs) {
    show(Tab::info);
    (void)takeSent();
    type(Qt::Key_Up);
    type(Qt::Key_Escape);
    EXPECT_THAT(takeCommands(), IsEmpty());
}

TEST_F(Remote, ControlAndThePageKeysLeadToTheNextTabAndBack) {
    type(Qt::Key_PageDown, Qt::ControlModifier);
    EXPECT_EQ(view.selectedTab(), Tab::clipboard);
    type(Qt::Key_PageUp, Qt::ControlModifier);
    EXPECT_EQ(view.selectedTab(), Tab::remote);
}

TEST_F(Remote, ControlAndTabReachEveryControlAndTheRestOfTheWindow) {
    EXPECT_THAT(tabOrder(Qt::ControlModifier), IsSupersetOf({"Tabs",
                                                             "Open System Settings",
                                                             "Refresh Status",
                                                             "Previous",
                                                             "Back 5 seconds",
                                                             "Play or pause",
                                                             "Forward 5 seconds",
                                                             "Next",
                                                             "Volume down",
                                                             "Volume up",
                                                             "Up (↑)",
                                                             "Select / Enter (Space or Return)",
                                                             "Back",
                                                             "Enter",
                                                             "Tab →",
                                                             "← Tab",
                                                             "Home",
                                                             "Recents",
                                                             "Notifications",
                                                             "Search",
                                                             "App Menu"}));
}

TEST_F(Remote, ControlAndTabGoBackWithShift) {
    focus("Next", Qt::ControlModifier);
    type(Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_TRUE(hasFocus("Forward 5 seconds"));
}

TEST_F(Remote, ShiftAndReturnPressTheButtonThatHasTheKeyboard) {
    focus("Volume up", Qt::ControlModifier);
    EXPECT_EQ(commandOf(Qt::Key_Return, Qt::ShiftModifier), "vol_up");
}

TEST_F(Remote, ButtonsSendTheirCommands) {
    EXPECT_EQ(commandOf("Previous"), "prev");
    EXPECT_EQ(commandOf("Back 5 seconds"), "seek_backward");
    EXPECT_EQ(commandOf("Play or pause"), "play_pause");
    EXPECT_EQ(commandOf("Forward 5 seconds"), "seek_forward");
    EXPECT_EQ(commandOf("Next"), "next");
    EXPECT_EQ(commandOf("Volume down"), "vol_down");
    EXPECT_EQ(commandOf("Volume up"), "vol_up");
    EXPECT_EQ(commandOf("Left (←)"), "dpad_left");
    EXPECT_EQ(commandOf("Select / Enter (Space or Return)"), "dpad_center");
    EXPECT_EQ(commandOf("Back"), "back");
    EXPECT_EQ(commandOf("Enter"), "dpad_center");
    EXPECT_EQ(commandOf("← Tab"), "tab_backward");
    EXPECT_EQ(commandOf("App Menu"), "app_menu");
}

TEST_F(Remote, AClickSendsOnce) {
    click(*item(QAccessible::Button, QStringLiteral("Home")));
    EXPECT_THAT(takeCommands(), ElementsAre("home"));
}

TEST_F(Remote, TheWarningGoesWhenTheUserAsksAgainAfterThePermissionIsThere) {
    const auto title = QStringLiteral("Accessibility Access Required");
    EXPECT_TRUE(shows(title));
    fake.accessibilityTrust.isTrusted = true;
    press(QStringLiteral("Refresh Status"));
    EXPECT_FALSE(shows(title));
}

TEST_F(Remote, TheWarningOpensTheSettings) {
    press(QStringLiteral("Open System Settings"));
    EXPECT_THAT(fake.systemSettings.opened, ElementsAre(SystemSettings::Pane::accessibility));
}

TEST_F(Remote, TheTableNamesEachKey) {
    for (const auto* key :
         {"↑ ↓ ← →", "Space", "Return", "Tab / ⇧Tab", "Esc", "⌘Return", "⌥Tab", "⌘N", "⌥Space", "⌃Esc"}) {
        EXPECT_THAT(names(QAccessible::StaticText), Contains(key));
    }
}
