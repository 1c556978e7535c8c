import QtQuick
import QtQuick.Window
import Brenvale

// Buttons that press keys of the phone, each with a key of this keyboard. As Tab is one of them, Control and Tab walk
// through the controls here, and Shift and Return press the one that has the keyboard.
ScrollPage {
    id: tab

    required property SettingsView view

    padding: 30
    spacing: 25

    function walk(isForward) {
        const start = Window.activeFocusItem ?? tab;
        start.nextItemInFocusChain(isForward).forceActiveFocus(isForward ? Qt.TabFocusReason : Qt.BacktabFocusReason);
    }

    AccessibilityWarning {
        visible: !tab.view.isAccessibilityEnabled
        view: tab.view
    }
    ControlCard {
        title: "Control Android Device"

        MediaButtons {
            view: tab.view
        }
    }
    ControlCard {
        title: "Navigation"

        NavigationButtons {
            view: tab.view
        }
    }
    ControlCard {
        title: "Keyboard Shortcuts"
        spacing: 10

        ShortcutTable {
            rows: tab.view.shortcutRows
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
