pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Brenvale

// The round green button.
T.AbstractButton {
    id: control

    readonly property color green: Theme.strengthened(Theme.green, Theme.white, 3)

    implicitWidth: 72
    implicitHeight: 72
    focusPolicy: Qt.TabFocus
    opacity: enabled ? 1 : 0.4

    Accessible.role: Accessible.Button
    Accessible.name: "Call"
    Accessible.onPressAction: control.clicked()

    contentItem: Item {
        Symbol {
            anchors.centerIn: parent
            name: "call-start"
            color: Theme.white
            size: 28
        }
    }
    background: Rectangle {
        radius: height / 2
        color: control.down ? Qt.darker(control.green, 1.2) : control.hovered ? Qt.darker(control.green, 1.08)
             : control.green

        FocusRing {
            radius: height / 2
            isShown: control.visualFocus
        }
    }
}
