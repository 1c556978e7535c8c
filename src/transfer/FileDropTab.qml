pragma ComponentBehavior: Bound

import QtQuick
import Brenvale

// Files on their way in both directions.
Rectangle {
    id: tab

    required property SettingsView view

    color: Theme.controlBackground

    ListHeader {
        id: header

        width: parent.width
        title: "File Drop"
        description: "Easily move files between your Mac and Android. Received files are saved to your Downloads folder."
        actionText: "Send Files..."
        actionSymbol: "document-send"
        canClear: tab.view.fileTransfers.count > 0
        onActionTriggered: FilePicker.open(tab.view)
        onClearTriggered: tab.view.clearFileTransfers()
    }
    ScrollList {
        anchors {
            fill: parent
            topMargin: header.height
        }
        helpText: "File transfers"
        model: tab.view.fileTransfers
        delegate: FileTransferRow {
            onFolderRequested: file => tab.view.showInFolder(file)
        }
    }
}
