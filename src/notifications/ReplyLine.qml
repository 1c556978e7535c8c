import QtQuick
import Brenvale

// Where the user answers a notification. The draft belongs to no row: it follows the line.
Item {
    id: line

    required property SettingsView view
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
        text: line.view.replyText
        onTextEdited: line.view.replyText = text
        onAccepted: line.view.sendReply(line.rowId)
        Keys.onEscapePressed: line.view.cancelReply()
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
        onClicked: line.view.sendReply(line.rowId)
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
        onClicked: line.view.cancelReply()
    }
}
