import QtQuick
import Brenvale

// Where the user answers a notification. The draft belongs to no row: it follows the line.
Item {
    id: line

    required property NotificationsState notifications
    required property string rowId

    implicitHeight: field.height + 4

    readonly property alias field: field

    TextInputField {
        id: field

        anchors {
            left: parent.left
            right: sendButton.left
            rightMargin: Theme.spacing
            bottom: parent.bottom
        }
        controlSize: "small"
        placeholderText: "Type reply..."
        text: line.notifications.replyText
        onTextEdited: line.notifications.replyText = text
        onAccepted: line.notifications.sendReply(line.rowId)
        Keys.onEscapePressed: line.notifications.cancelReply()
    }
    TextButton {
        id: sendButton

        anchors {
            right: cancelButton.left
            rightMargin: Theme.spacing
            bottom: parent.bottom
        }
        text: "Send"
        isProminent: true
        controlSize: "small"
        onClicked: line.notifications.sendReply(line.rowId)
    }
    PlainButton {
        id: cancelButton

        anchors {
            right: parent.right
            rightMargin: -horizontalPadding
            verticalCenter: field.verticalCenter
        }
        text: "Cancel"
        font: Theme.caption
        color: Theme.primary
        onClicked: line.notifications.cancelReply()
    }
}
