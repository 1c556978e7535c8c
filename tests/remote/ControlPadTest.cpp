#include "remote/ControlPad.h"

#include <gmock/gmock.h>

using namespace brenvale;
using testing::ElementsAre;

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

TEST(ControlPad, AnIconThatStandsAloneHasANameToBeReadOut) {
    std::vector<std::string> names;
    for (const auto& button : mediaButtons() + volumeButtons()) {
        names.push_back(button.name.toStdString());
    }
    EXPECT_THAT(names, ElementsAre("Previous", "Back 5 seconds", "Play or pause", "Forward 5 seconds", "Next",
                                   "Volume down", "Volume up"));
}
