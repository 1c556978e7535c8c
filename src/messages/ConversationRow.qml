pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Brenvale

// One conversation: with whom, since when, and what was said last.
T.AbstractButton {
    id: row

    required property string displayAddress
    required property string shownName
    required property string initials
    required property string relativeDate
    required property string lastBody
    property bool isActive: false
    property bool isCurrent: false

    implicitHeight: Math.max(36, texts.implicitHeight) + 2 * 4 + 4
    focusPolicy: Qt.NoFocus

    Accessible.role: Accessible.Button
    Accessible.name: `${shownName}, ${relativeDate}, ${lastBody}`
    Accessible.selectable: true
    Accessible.selected: isActive
    Accessible.onPressAction: row.clicked()

    Item {
        anchors.fill: parent

        ContactAvatar {
            id: avatar

            x: 16
            anchors.verticalCenter: parent.verticalCenter
            initials: row.initials
        }
        Column {
            id: texts

            anchors {
                left: avatar.right
                leftMargin: 12
                right: parent.right
                rightMargin: 16
                verticalCenter: parent.verticalCenter
            }
            spacing: 3

            Item {
                width: parent.width
                implicitHeight: name.height

                RowText {
                    id: name

                    width: parent.width - date.width - Theme.spacing
                    text: Theme.oneLine(row.shownName)
                    font: Theme.headline
                    color: Theme.primary
                }
                RowText {
                    id: date

                    anchors {
                        right: parent.right
                        verticalCenter: parent.verticalCenter
                    }
                    text: row.relativeDate
                    font: Theme.sized(10)
                }
            }
            RowText {
                width: parent.width
                text: Theme.oneLine(row.lastBody)
                font: Theme.sized(11)
            }
        }
    }
    background: Item {
        Rectangle {
            x: 8
            y: 1
            width: parent.width - 16
            height: parent.height - 2
            radius: Theme.fieldRadius
            color: row.isActive ? Theme.withOpacity(Theme.blue, 0.15) : row.down ? Theme.pressed
                 : row.hovered ? Theme.hover : "transparent"
            border.width: row.isActive && Theme.isHighContrast ? 1 : 0
            border.color: Theme.primary

            FocusRing {
                anchors.margins: 0
                radius: parent.radius
                isShown: row.isCurrent
            }
        }
    }
}
