#include "remote/ControlPad.h"

namespace brenvale {

const QList<ControlPadButton>& mediaButtons() {
    static const QList<ControlPadButton> buttons{
        {.name = QStringLiteral("Previous"),
         .icon = QStringLiteral("media-skip-backward"),
         .command = QStringLiteral("prev")},
        {.name = QStringLiteral("Back 5 seconds"),
         .icon = QStringLiteral("media-seek-backward"),
         .command = QStringLiteral("seek_backward")},
        {.name = QStringLiteral("Play or pause"),
         .icon = QStringLiteral("media-playback-start"),
         .command = QStringLiteral("play_pause")},
        {.name = QStringLiteral("Forward 5 seconds"),
         .icon = QStringLiteral("media-seek-forward"),
         .command = QStringLiteral("seek_forward")},
        {.name = QStringLiteral("Next"),
         .icon = QStringLiteral("media-skip-forward"),
         .command = QStringLiteral("next")},
    };
    return buttons;
}

const QList<ControlPadButton>& volumeButtons() {
    static const QList<ControlPadButton> buttons{
        {.name = QStringLiteral("Volume down"),
         .icon = QStringLiteral("audio-volume-low"),
         .command = QStringLiteral("vol_down")},
        {.name = QStringLiteral("Volume up"),
         .icon = QStringLiteral("audio-volume-high"),
         .command = QStringLiteral("vol_up")},
    };
    return buttons;
}

const QList<ControlPadButton>& dPadButtons() {
    static const QList<ControlPadButton> buttons{
        {.icon = QStringLiteral("go-up"),
         .command = QStringLiteral("dpad_up"),
         .help = QStringLiteral("Up (↑)"),
         .shortcut = QStringLiteral("Up")},
        {.icon = QStringLiteral("go-previous"),
         .command = QStringLiteral("dpad_left"),
         .help = QStringLiteral("Left (←)"),
         .shortcut = QStringLiteral("Left")},
        {.command = QStringLiteral("dpad_center"),
         .help = QStringLiteral("Select / Enter (Space or Return)"),
         .shortcut = QStringLiteral("Space")},
        {.icon = QStringLiteral("go-next"),
         .command = QStringLiteral("dpad_right"),
         .help = QStringLiteral("Right (→)"),
         .shortcut = QStringLiteral("Right")},
        {.icon = QStringLiteral("go-down"),
         .command = QStringLiteral("dpad_down"),
         .help = QStringLiteral("Down (↓)"),
         .shortcut = QStringLiteral("Down")},
    };
    return buttons;
}

const QList<ControlPadButton>& coreButtons() {
    static const QList<ControlPadButton> buttons{
        {.title = QStringLiteral("Back"),
         .icon = QStringLiteral("arrow-left"),
         .command = QStringLiteral("back"),
         .help = QStringLiteral("Back (Esc or ⌘⌫)"),
         .shortcut = QStringLiteral("Esc")},
        {.title = QStringLiteral("Enter"),
         .icon = QStringLiteral("key-enter"),
         .command = QStringLiteral("dpad_center"),
         .help = QStringLiteral("Enter / Tap (Return)"),
         .shortcut = QStringLiteral("Return")},
        {.title = QStringLiteral("Tab →"),
         .icon = QStringLiteral("format-indent-more"),
         .command = QStringLiteral("tab_forward"),
         .help = QStringLiteral("Focus Next (Tab)"),
         .shortcut = QStringLiteral("Tab")},
        {.title = QStringLiteral("← Tab"),
         .icon = QStringLiteral("format-indent-less"),
         .command = QStringLiteral("tab_backward"),
         .help = QStringLiteral("Focus Prev (⇧Tab)"),
         .shortcut = QStringLiteral("Shift+Tab")},
    };
    return buttons;
}

const QList<ControlPadButton>& systemButtons() {
    static const QList<ControlPadButton> buttons{
        {.title = QStringLiteral("Home"),
         .icon = QStringLiteral("go-home"),
         .command = QStringLiteral("home"),
         .help = QStringLiteral("Home Screen (⌘Return)"),
         .shortcut = QStringLiteral("Ctrl+Return")},
        {.title = QStringLiteral("Recents"),
         .icon = QStringLiteral("window-duplicate"),
         .command = QStringLiteral("recents"),
         .help = QStringLiteral("Recents (⌥Tab)"),
         .shortcut = QStringLiteral("Alt+Tab")},
        {.title = QStringLiteral("Notifications"),
         .icon = QStringLiteral("notifications"),
         .command = QStringLiteral("notifications"),
         .help = QStringLiteral("Notifications (⌘N)"),
         .shortcut = QStringLiteral("Ctrl+N")},
        {.title = QStringLiteral("Search"),
         .icon = QStringLiteral("edit-find"),
         .command = QStringLiteral("search"),
         .help = QStringLiteral("Global Search (⌥Space)"),
         .shortcut = QStringLiteral("Alt+Space")},
        {.title = QStringLiteral("App Menu"),
         .icon = QStringLiteral("overflow-menu"),
         .command = QStringLiteral("app_menu"),
         .help = QStringLiteral("App Menu (⌃Esc)"),
         .shortcut = QStringLiteral("Ctrl+Esc")},
    };
    return buttons;
}

const QList<ShortcutRow>& shortcutRows() {
    static const QList<ShortcutRow> rows{
        {.key = QStringLiteral("↑ ↓ ← →"), .description = QStringLiteral("D-Pad directional")},
        {.key = QStringLiteral("Space"), .description = QStringLiteral("D-Pad center / tap")},
        {.key = QStringLiteral("Return"), .description = QStringLiteral("Enter")},
        {.key = QStringLiteral("Tab / ⇧Tab"), .description = QStringLiteral("Focus next / previous")},
        {.key = QStringLiteral("Esc"), .description = QStringLiteral("Back")},
        {.key = QStringLiteral("⌘Return"), .description = QStringLiteral("Home screen")},
        {.key = QStringLiteral("⌥Tab"), .description = QStringLiteral("Recents / App overview")},
        {.key = QStringLiteral("⌘N"), .description = QStringLiteral("Notifications panel")},
        {.key = QStringLiteral("⌥Space"), .description = QStringLiteral("Global search")},
        {.key = QStringLiteral("⌃Esc"), .description = QStringLiteral("App menu / options")},
    };
    return rows;
}

} // namespace brenvale
