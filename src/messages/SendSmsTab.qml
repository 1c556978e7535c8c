import QtQuick
import Brenvale

// Conversations at the left, the open one at the right.
Item {
    id: tab

    required property SendSmsState sms

    Component.onCompleted: sms.appeared()
    Keyboard.home: thread.field ?? conversations.searchField

    function search() {
        conversations.searchField.forceActiveFocus(Qt.ShortcutFocusReason);
        conversations.searchField.selectAll();
    }

    ConversationPane {
        id: conversations

        width: 260
        height: parent.height
        sms: tab.sms
        onOpened: tab.Keyboard.goHome()
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
        sms: tab.sms
    }
}
