pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Brenvale

// A button with a border that presses a key of the phone, as does its shortcut. `modelData` describes it.
TextButton {
    id: button

    required property var modelData
    property real symbolSize: 16

    focusPolicy: Qt.TabFocus
    horizontalPadding: 8

    Accessible.name: modelData.title || modelData.name || modelData.help
    Accessible.description: modelData.help

    contentItem: Item {
        Symbol {
            anchors.centerIn: parent
            name: button.modelData.icon
            decoration: button.modelData.icon === "" ? "circle" : ""
            size: button.symbolSize
        }
    }

    Shortcut {
        sequence: button.modelData.shortcut
        autoRepeat: false
        onActivated: button.clicked()
    }
    HelpTip {
        text: button.modelData.help
        isWanted: button.hovered || button.visualFocus
        closePolicy: T.Popup.CloseOnPressOutsideParent // Escape is the phone's here
    }
}
