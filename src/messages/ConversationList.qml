pragma ComponentBehavior: Bound

import QtQuick
import Brenvale

// The conversations, newest first. The arrow keys walk through them, Return opens one.
ScrollList {
    id: list

    required property SettingsView view
    signal opened

    helpText: "Conversations"
    model: view.filteredConversations
    reuseItems: true
    activeFocusOnTab: count > 0
    header: Item {
        height: 4
    }
    footer: Item {
        height: 4
    }

    onActiveFocusChanged: if (activeFocus && currentIndex < 0) currentIndex = 0
    Keys.onReturnPressed: openCurrent()
    Keys.onEnterPressed: openCurrent()
    Keys.onSpacePressed: openCurrent()

    function openCurrent() {
        if (currentItem) {
            open((currentItem as ConversationRow).displayAddress);
        }
    }

    function open(address) {
        view.openConversation(address);
        opened();
    }

    delegate: ConversationRow {
        width: ListView.view.width
        isActive: list.view.hasActiveRecipient && list.view.activeRecipient === displayAddress
        isCurrent: list.activeFocus && ListView.isCurrentItem
        onClicked: list.open(displayAddress)
        ListView.onPooled: visible = false // a row in reserve is not to be read out
        ListView.onReused: visible = true
    }
}
