import QtQuick
import QtQuick.Templates as T
import Brenvale

// A button that is only an icon. `helpText` says what it does: the tip under the pointer and the name for
// assistive technology.
T.AbstractButton {
    id: control

    required property string symbol
    required property string helpText
    property color color: Theme.secondary
    property real symbolSize: 16
    property string decoration
    property real size: Math.max(Theme.controlHeight, Math.round(symbolSize * Theme.iconScale) + 12)
    property bool isRound: false

    implicitWidth: size
    implicitHeight: size
    focusPolicy: Qt.StrongFocus
    opacity: enabled ? 1 : 0.4

    Accessible.role: Accessible.Button
    Accessible.name: helpText
    Accessible.onPressAction: control.clicked()
    Keys.onReturnPressed: control.clicked()
    Keys.onEnterPressed: control.clicked()

    contentItem: Item {
        Symbol {
            anchors.centerIn: parent
            name: control.symbol
            decoration: control.decoration
            color: control.color
            size: control.symbolSize
        }
    }

    background: Rectangle {
        radius: control.isRound ? height / 2 : Theme.controlRadius
        color: control.down ? Theme.pressed : control.hovered ? Theme.hover : "transparent"

        FocusRing {
            isShown: control.visualFocus
            radius: parent.radius + Theme.focusRingWidth + 1
        }
    }

    HelpTip {
        text: control.helpText
        isWanted: control.enabled && (control.hovered || control.visualFocus)
    }
}
