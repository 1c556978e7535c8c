import QtQuick
import Brenvale

// Conversations at the left, the open one at the right.
Item {
    id: tab

    required property SettingsView view

    Component.onCompleted: view.messagesTabAppeared()

    ConversationPane {
        id: conversations

        width: 260
        height: parent.height
        view: tab.view
        onOpened: thread.takeKeyboard()
    }
    Hairline {
        id: divider

        x: conversations.width
        height: parent.height
    }
    ThreadPane {
        id: thread

        anchors {
            left: divider.right
            right: parent.right
            top: parent.top
            bottom: parent.bottom
        }
        view: tab.view
    }
}
