#include "remote/ControlPad.h"
#include "fakes/TestView.h"

#include <QMetaProperty>

#include <gmock/gmock.h>

using namespace brenvale;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// "shortcut command" of each button.
std::vector<std::string> keys(const QList<ControlPadButton>& buttons) {
    std::vector<std::string> texts;
    for (const auto& button : buttons) {
        texts.push_back((button.shortcut + u' ' + button.command).toStdString());
    }
    return texts;
}

std::vector<std::string> titles(const QList<ControlPadButton>& buttons) {
    std::vector<std::string> texts;
    for (const auto& button : buttons) {
        texts.push_back(button.title.toStdString());
    }
    return texts;
}

struct RemoteTab : testing::Test, TestView {};

} // namespace

TEST(ControlPad, MediaAndVolumeHaveNoShortcut) {
    EXPECT_THAT(keys(mediaButtons()),
                ElementsAre(" prev", " seek_backward", " play_pause", " seek_forward", " next"));
    EXPECT_THAT(keys(volumeButtons()), ElementsAre(" vol_down", " vol_up"));
}

TEST(ControlPad, TheDPadFollowsTheArrows) {
    EXPECT_THAT(keys(dPadButtons()), ElementsAre("Up dpad_up", "Left dpad_left", "Space dpad_center",
                                                 "Right dpad_right", "Down dpad_down"));
}

TEST(ControlPad, ReturnIsTheCentreToo) {
    EXPECT_THAT(titles(coreButtons()), ElementsAre("Back", "Enter", "Tab →", "← Tab"));
    EXPECT_THAT(keys(coreButtons()),
                ElementsAre("Esc back", "Return dpad_center", "Tab tab_forward", "Shift+Tab tab_backward"));
}

TEST(ControlPad, ModifiersMakeOtherCommandsOfTheSameKeys) {
    EXPECT_THAT(titles(systemButtons()),
                ElementsAre("Home", "Recents", "Notifications", "Search", "App Menu"));
    EXPECT_THAT(keys(systemButtons()),
                ElementsAre("Ctrl+Return home", "Alt+Tab recents", "Ctrl+N notifications", "Alt+Space search",
                            "Ctrl+Esc app_menu"));
}

TEST(ControlPad, TheSecondShortcutThatATipPromisesIsNotBound) {
    EXPECT_EQ(coreButtons()[0].help, QStringLiteral("Back (Esc or ⌘⌫)"));
    for (const auto* buttons : {&dPadButtons(), &coreButtons(), &systemButtons()}) {
        for (const auto& button : *buttons) {
            EXPECT_FALSE(button.shortcut.contains(QStringLiteral("Backspace")));
        }
    }
}

TEST_F(RemoteTab, SendsCommandsOfBothKinds) {
    connect();
    view.sendMediaCommand(QStringLiteral("play_pause"));
    view.sendNavCommand(QStringLiteral("dpad_center"));
    EXPECT_THAT(takeSent(), ElementsAre(R"({"action":"media_command","command":"play_pause"})",
                                        R"({"action":"nav_command","command":"dpad_center"})"));
}

TEST_F(RemoteTab, WithoutAPhoneNothingIsTold) {
    view.sendNavCommand(QStringLiteral("home"));
    run();
    EXPECT_THAT(fake.log.lines(), IsEmpty());
}

TEST_F(RemoteTab, ViewsReadTheButtonsByName) {
    const auto back = SettingsView::coreButtons()[0].value<ControlPadButton>();
    const auto& type = ControlPadButton::staticMetaObject;
    for (const auto* name : {"title", "icon", "command", "help", "shortcut"}) {
        EXPECT_FALSE(type.property(type.indexOfProperty(name)).readOnGadget(&back).toString().isEmpty())
            << name;
    }
    EXPECT_EQ(SettingsView::shortcutRows()[8].toMap()[QStringLiteral("description")],
              QStringLiteral("Global search"));
    EXPECT_EQ(SettingsView::shortcutRows().size(), 10);
}

TEST(ControlPad, AnIconThatStandsAloneHasANameToBeReadOut) {
    std::vector<std::string> names;
    for (const auto& button : mediaButtons() + volumeButtons()) {
        names.push_back(button.name.toStdString());
    }
    EXPECT_THAT(names, ElementsAre("Previous", "Back 5 seconds", "Play or pause", "Forward 5 seconds", "Next",
                                   "Volume down", "Volume up"));
}
