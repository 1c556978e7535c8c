pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Brenvale

// Starts a thread with a number that was typed.
T.AbstractButton {
    id: row

    required property string number

    implicitHeight: Math.max(44, texts.implicitHeight + 2 * 4)
    focusPolicy: Qt.TabFocus

    onActiveFocusChanged: if (!activeFocus) focus = false // or the list would give it the keyboard again

    Accessible.role: Accessible.Button
    Accessible.name: `New message to ${number}`
    Accessible.onPressAction: row.clicked()
    Keys.onReturnPressed: row.clicked()
    Keys.onEnterPressed: row.clicked()

    Item {
        anchors.fill: parent

        Symbol {
            id: icon

            x: 8 + Math.round((36 - width) / 2)
            anchors.verticalCenter: parent.verticalCenter
            name: "document-send"
            color: Theme.blue
            size: 22
        }
        Column {
            id: texts

            x: 56
            width: parent.width - x - 8
            anchors.verticalCenter: parent.verticalCenter

            Text {
                width: parent.width
                text: "New message to"
                font: Theme.caption
                color: Theme.secondary
                textFormat: Text.PlainText
                renderType: Text.NativeRendering
                Accessible.ignored: true
            }
            Text {
                width: parent.width
                text: Theme.oneLine(row.number)
                font: Theme.weighted(Theme.body, Font.Medium)
                color: Theme.primary
                elide: Text.ElideRight
                horizontalAlignment: Text.AlignLeft
                textFormat: Text.PlainText
                renderType: Text.NativeRendering
                Accessible.ignored: true
            }
        }
    }
    background: Rectangle {
        radius: Theme.fieldRadius
        color: row.down ? Theme.pressed : row.hovered ? Theme.hover : "transparent"

        FocusRing {
            isShown: row.visualFocus
            anchors.margins: 0
            radius: parent.radius
        }
    }
}
