import QtQuick
import QtQuick.Templates as T
import Brenvale

// A button that is only its text, with an icon before it where one is named.
T.AbstractButton {
    id: control

    property color color: Theme.tintText
    property string symbol
    property string helpText

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    horizontalPadding: 4
    verticalPadding: 2
    spacing: 4
    font: Theme.body
    focusPolicy: Qt.StrongFocus
    opacity: enabled ? 1 : 0.4

    Accessible.role: Accessible.Button
    Accessible.name: text !== "" ? text : helpText
    Accessible.description: helpText
    Accessible.onPressAction: control.clicked()
    Keys.onReturnPressed: control.clicked()
    Keys.onEnterPressed: control.clicked()

    contentItem: Row {
        spacing: control.spacing

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            visible: control.symbol !== ""
            name: control.symbol
            color: control.color
            size: control.font.pixelSize * 1.25 / Theme.iconScale
        }
        Text {
            anchors.verticalCenter: parent.verticalCenter
            text: control.text
            font: control.font
            color: control.color
            textFormat: Text.PlainText
            renderType: Text.NativeRendering
            Accessible.ignored: true
        }
    }

    background: Rectangle {
        radius: Theme.controlRadius
        color: control.down ? Theme.pressed : control.hovered ? Theme.hover : "transparent"

        FocusRing {
            isShown: control.visualFocus
        }
    }
}
