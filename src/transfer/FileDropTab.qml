pragma ComponentBehavior: Bound

import QtQuick
import Brenvale

// Files on their way in both directions.
Rectangle {
    id: tab

    required property FileDropState fileDrop

    color: Theme.controlBackground

    Keyboard.home: list.visible ? list : tab

    ListHeader {
        id: header

        width: parent.width
        title: "File Drop"
        description: "Easily move files between your Mac and Android. Received files are saved to your Downloads folder."
        actionText: "Send Files..."
        actionSymbol: "document-send"
        canClear: tab.fileDrop.fileTransfers.count > 0
        onActionTriggered: FilePicker.open(tab.fileDrop)
        onClearTriggered: tab.fileDrop.clearFileTransfers()
    }
    // No text: the tab's head says what it is for.
    EmptyState {
        anchors {
            fill: parent
            topMargin: header.height
        }
        visible: list.count === 0
        symbol: "folder-download"
    }
    ScrollList {
        id: list

        anchors {
            fill: parent
            topMargin: header.height
        }
        helpText: "File transfers"
        model: tab.fileDrop.fileTransfers
        delegate: FileTransferRow {
            onFolderRequested: file => tab.fileDrop.showInFolder(file)
        }
    }
    DropArea {
        id: dropArea

        anchors.fill: parent
        onEntered: drag => drag.accepted = drag.hasUrls
        onDropped: drop => {
            tab.fileDrop.sendFiles(drop.urls);
            drop.accept(Qt.CopyAction);
        }
    }
    Rectangle {
        anchors {
            fill: parent
            margins: Theme.spacing
            topMargin: header.height + Theme.spacing
        }
        visible: list.count === 0 || dropArea.containsDrag
        radius: Theme.cardRadius
        color: dropArea.containsDrag ? Theme.withOpacity(Theme.tint, 0.08) : "transparent"
        border.width: dropArea.containsDrag ? 2 : 1
        border.color: dropArea.containsDrag ? Theme.tintText : Theme.fieldBorder
    }
}
