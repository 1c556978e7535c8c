import QtQuick
import Brenvale

// The head of a tab that shows a list: its title, what it is for, and what can be done with all of it.
Rectangle {
    id: header

    required property string title
    required property string description
    required property string actionText
    required property string actionSymbol
    property bool canClear: false
    signal actionTriggered
    signal clearTriggered

    implicitHeight: column.implicitHeight + 2 * Theme.padding
    color: Theme.windowBackground

    Column {
        id: column

        x: Theme.padding
        y: Theme.padding
        width: parent.width - 2 * Theme.padding
        spacing: 16

        Item {
            width: parent.width
            height: Math.max(title.height, clearButton.height)

            Label {
                id: title

                anchors.verticalCenter: parent.verticalCenter
                text: header.title
                font: Theme.title2Bold
                Accessible.role: Accessible.Heading
            }
            PlainButton {
                id: clearButton

                anchors.right: parent.right
                anchors.rightMargin: -horizontalPadding
                anchors.verticalCenter: parent.verticalCenter
                visible: header.canClear
                text: "Clear History"
                font: Theme.caption
                color: Theme.secondary
                onClicked: header.clearTriggered()
            }
        }
        Label {
            width: parent.width
            text: header.description
            font: Theme.subheadline
            color: Theme.secondary
            wrapMode: Text.Wrap
        }
        TextButton {
            text: header.actionText
            symbol: header.actionSymbol
            isProminent: true
            controlSize: "large"
            onClicked: header.actionTriggered()
        }
    }
    Hairline {
        anchors {
            left: parent.left
            right: parent.right
            bottom: parent.bottom
        }
    }
}
