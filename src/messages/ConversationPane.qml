import QtQuick
import Brenvale

// All conversations, or those that hold what is searched for. A number that is typed can be written to.
Item {
    id: pane

    required property SendSmsState sms
    readonly property alias searchField: search.field
    signal opened

    Label {
        id: title

        x: Theme.padding
        anchors.verticalCenter: refreshButton.verticalCenter
        text: "Messages"
        font: Theme.title2Bold
        Accessible.role: Accessible.Heading
    }
    IconButton {
        id: refreshButton

        anchors {
            right: parent.right
            rightMargin: Theme.padding - 6
            top: parent.top
            topMargin: Theme.spacing
        }
        symbol: "view-refresh"
        helpText: "Refresh messages"
        onClicked: pane.sms.requestSmsHistory()
    }
    ConversationSearch {
        id: search

        anchors {
            left: parent.left
            right: parent.right
            top: refreshButton.bottom
            margins: 12
            topMargin: 8
        }
        sms: pane.sms
    }
    Hairline {
        id: divider

        y: search.y + search.height + 8
        width: parent.width
    }
    Item {
        id: area

        anchors {
            top: divider.bottom
            left: parent.left
            right: parent.right
            bottom: parent.bottom
        }

        // As high as that of the thread beside it.
        EmptyState {
            y: -area.y
            width: pane.width
            height: pane.height
            visible: pane.sms.showsNoMessages
            symbol: "dialog-messages"
            symbolSize: 32
            symbolColor: Theme.faded(0.24, 3)
            title: "No Messages"
            spacing: 8
        }
        ConversationList {
            anchors.fill: parent
            visible: !pane.sms.showsNoMessages
            sms: pane.sms
            onOpened: pane.opened()
        }
    }
}
