import QtQuick
import QtQuick.Window
import Brenvale

// Buttons that press keys of the phone, each with a key of this keyboard. As Tab is one of them, Control and Tab walk
// through the controls here, and Shift and Return press the one that has the keyboard.
ScrollPage {
    id: tab

    required property RemoteControlState remote

    padding: 30
    spacing: 25

    function walk(isForward) {
        const start = Window.activeFocusItem ?? tab;
        start.nextItemInFocusChain(isForward).forceActiveFocus(isForward ? Qt.TabFocusReason : Qt.BacktabFocusReason);
    }

    AccessibilityWarning {
        visible: !tab.remote.isAccessibilityEnabled
        remote: tab.remote
    }
    ControlCard {
        title: "Control Android Device"

        MediaButtons {
            remote: tab.remote
        }
    }
    ControlCard {
        title: "Navigation"

        NavigationButtons {
            remote: tab.remote
        }
    }
    ControlCard {
        title: "Keyboard Shortcuts"
        spacing: 10

        ShortcutTable {
            rows: tab.remote.shortcutRows
        }
    }
    Shortcut {
        sequence: "Ctrl+Tab"
        onActivated: tab.walk(true)
    }
    Shortcut {
        sequence: "Ctrl+Shift+Tab"
        onActivated: tab.walk(false)
    }
}
