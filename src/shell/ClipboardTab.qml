pragma ComponentBehavior: Bound

import QtQuick
import Brenvale

// What the phone put on the desktop's clipboard.
Rectangle {
    id: tab

    required property ClipboardState clipboard
    readonly property bool isEmpty: clipboard.clipboardHistory.count === 0

    color: Theme.controlBackground

    Keyboard.home: list.visible ? list : tab

    ListHeader {
        id: header

        width: parent.width
        title: "Clipboard"
        description: "Manage and sync clipboard content between your devices."
        actionText: "Send Current Mac Clipboard"
        actionSymbol: "document-send"
        canClear: !tab.isEmpty
        onActionTriggered: tab.clipboard.sendCurrentClipboard()
        onClearTriggered: tab.clipboard.clearClipboard()
    }
    EmptyState {
        anchors {
            fill: parent
            topMargin: header.height
        }
        visible: tab.isEmpty
        symbol: "edit-paste"
        title: "No received items yet"
    }
    ScrollList {
        id: list

        anchors {
            fill: parent
            topMargin: header.height
        }
        visible: !tab.isEmpty
        helpText: "Clipboard history"
        model: tab.clipboard.clipboardHistory
        delegate: ClipboardRow {
            onCopyRequested: content => tab.clipboard.copyText(content)
        }
    }
}
