pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Brenvale

// A round key with its letters below.
T.AbstractButton {
    id: key

    required property string letters

    implicitWidth: 70
    implicitHeight: 70
    focusPolicy: Qt.TabFocus

    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.description: letters
    Accessible.onPressAction: key.clicked()

    contentItem: Item {
        Column {
            anchors.centerIn: parent
            spacing: -2

            Text {
                anchors.horizontalCenter: parent.horizontalCenter
                text: key.text
                font: Theme.fitted(28, 32)
                color: Theme.primary
                textFormat: Text.PlainText
                renderType: Text.NativeRendering
                Accessible.ignored: true
            }
            Text {
                anchors.horizontalCenter: parent.horizontalCenter
                visible: text !== ""
                text: key.letters
                font: Theme.fitted(8, 9, Font.Bold)
                color: Theme.secondary
                textFormat: Text.PlainText
                renderType: Text.NativeRendering
                Accessible.ignored: true
            }
        }
    }
    background: Rectangle {
        radius: height / 2
        color: Theme.controlBackground
        border.width: Theme.isHighContrast ? 1 : 0
        border.color: Theme.primary

        Rectangle {
            anchors.fill: parent
            radius: parent.radius
            color: key.down ? Theme.pressed : key.hovered ? Theme.hover : "transparent"
        }
        FocusRing {
            radius: height / 2
            isShown: key.visualFocus
        }
    }
}
