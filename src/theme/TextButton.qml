import QtQuick
import QtQuick.Templates as T
import Brenvale

// A button with a border, or filled where it `isProminent`. `controlSize` is "small", "regular" or "large".
T.AbstractButton {
    id: control

    property bool isProminent: false
    property string controlSize: "regular"
    property string symbol
    property color color: Theme.primary
    readonly property color contentColor: isProminent ? Theme.textOnTint : color

    implicitWidth: Math.max(implicitHeight, implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: controlSize === "large" ? Theme.largeControlHeight
                  : controlSize === "small" ? Theme.smallControlHeight : Theme.controlHeight
    horizontalPadding: controlSize === "small" ? 8 : controlSize === "large" ? 16 : 12
    spacing: 6
    font: controlSize === "small" ? Theme.subheadline : Theme.body
    focusPolicy: Qt.StrongFocus
    opacity: enabled ? 1 : 0.4

    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.onPressAction: control.clicked()
    Keys.onReturnPressed: control.clicked()
    Keys.onEnterPressed: control.clicked()

    contentItem: Item {
        implicitWidth: children[0].implicitWidth
        implicitHeight: children[0].implicitHeight

        Row {
            anchors.centerIn: parent
            spacing: control.spacing

            Symbol {
                anchors.verticalCenter: parent.verticalCenter
                visible: control.symbol !== ""
                name: control.symbol
                color: control.contentColor
            }
            Text {
                anchors.verticalCenter: parent.verticalCenter
                text: control.text
                font: control.font
                color: control.contentColor
                textFormat: Text.PlainText
                renderType: Text.NativeRendering
                Accessible.ignored: true
            }
        }
    }

    background: Rectangle {
        radius: Theme.controlRadius
        color: control.isProminent ? Theme.tintFill : Theme.controlBackground
        border.width: control.isProminent && !Theme.isHighContrast ? 0 : 1
        border.color: Theme.fieldBorder

        Rectangle {
            anchors.fill: parent
            radius: parent.radius
            color: control.down ? Theme.pressed : control.hovered ? Theme.hover : "transparent"
        }
        FocusRing {
            isShown: control.visualFocus
        }
    }
}
