pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Window
import Brenvale

// The conversations, newest first, below the number to write to where one is typed. The arrow keys walk through them,
// Return opens one.
ScrollList {
    id: list

    required property SendSmsState sms
    signal opened

    helpText: "Conversations"
    model: sms.filteredConversations
    reuseItems: true
    activeFocusOnTab: count > 0
    topMargin: 4 + (newNumber.visible ? newNumber.height : 0)
    bottomMargin: 4

    onTopMarginChanged: contentY = originY - topMargin
    onActiveFocusChanged: if (list.Window.activeFocusItem === list && currentIndex < 0) currentIndex = 0
    Keys.onUpPressed: event => {
        event.accepted = newNumber.visible && currentIndex <= 0;
        if (event.accepted) {
            newNumber.forceActiveFocus(Qt.TabFocusReason);
        }
    }
    Keys.onReturnPressed: openCurrent()
    Keys.onEnterPressed: openCurrent()
    Keys.onSpacePressed: openCurrent()

    NewNumberRow {
        id: newNumber

        parent: list.contentItem
        x: 8
        y: list.originY - height
        width: list.width - 16
        visible: list.sms.showsNewNumberRow
        number: list.sms.contactQuery
        onClicked: {
            list.sms.openNewNumber();
            list.opened();
        }
        Keys.onDownPressed: {
            if (list.count > 0) {
                list.currentIndex = 0;
                newNumber.focus = false;
                list.forceActiveFocus(Qt.TabFocusReason);
            }
        }
    }

    function openCurrent() {
        if (currentItem) {
            open((currentItem as ConversationRow).displayAddress);
        }
    }

    function open(address) {
        sms.openConversation(address);
        opened();
    }

    delegate: ConversationRow {
        width: ListView.view.width
        isActive: list.sms.hasActiveRecipient && list.sms.activeRecipient === displayAddress
        isCurrent: list.Window.activeFocusItem === list && ListView.isCurrentItem
        onClicked: list.open(displayAddress)
        ListView.onPooled: visible = false // a row in reserve is not to be read out
        ListView.onReused: visible = true
    }
}
