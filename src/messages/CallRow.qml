pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Brenvale

// One call: which way it went, with whom and when.
T.AbstractButton {
    id: row

    required property string number
    required property string shownName
    required property string relativeDate
    required property bool isMissed
    required property bool isOutgoing
    property bool isCurrent: false
    readonly property string direction: isMissed ? "Missed call" : isOutgoing ? "Outgoing call" : "Incoming call"

    implicitHeight: texts.implicitHeight + 2 * Theme.rowPaddingVertical
    focusPolicy: Qt.NoFocus

    Accessible.role: Accessible.Button
    Accessible.name: `${direction}, ${shownName}, ${number}, ${relativeDate}`
    Accessible.onPressAction: row.clicked()

    Item {
        anchors.fill: parent

        Symbol {
            id: icon

            x: Theme.padding
            anchors.verticalCenter: parent.verticalCenter
            name: row.isOutgoing ? "call-outgoing" : "call-incoming"
            color: row.isMissed ? Theme.red : Theme.primary
        }
        Column {
            id: texts

            anchors {
                left: icon.right
                leftMargin: 12
                right: date.left
                rightMargin: Theme.spacing
                verticalCenter: parent.verticalCenter
            }
            spacing: 2

            RowText {
                width: parent.width
                text: Theme.oneLine(row.shownName)
                font: Theme.sized(13, Font.Medium)
                color: Theme.primary
            }
            RowText {
                width: parent.width
                text: Theme.oneLine(row.number)
                font: Theme.sized(11)
            }
        }
        RowText {
            id: date

            anchors {
                right: parent.right
                rightMargin: Theme.padding
                verticalCenter: parent.verticalCenter
            }
            text: row.relativeDate
            font: Theme.sized(10)
        }
    }
    background: Item {
        Rectangle {
            x: 4
            y: 1
            width: parent.width - 8
            height: parent.height - 2
            radius: Theme.fieldRadius
            color: row.down ? Theme.pressed : row.hovered ? Theme.hover : "transparent"

            FocusRing {
                anchors.margins: 0
                radius: parent.radius
                isShown: row.isCurrent
            }
        }
    }
}
