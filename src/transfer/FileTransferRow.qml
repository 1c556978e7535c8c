import QtQuick
import Brenvale

ListRow {
    id: row

    required property string fileName
    required property url url
    required property bool isOutgoing
    required property bool isCompleted
    required property double progress
    required property string progressText
    required property string statusText
    signal folderRequested(url file)

    verticalPadding: 4 + Theme.listRowInset
    hairlineInset: Theme.padding + icon.width + 12

    Accessible.name: fileName

    Item {
        width: parent.width
        implicitHeight: Math.max(texts.implicitHeight, folderButton.height)

        Symbol {
            id: icon

            anchors.verticalCenter: parent.verticalCenter
            name: row.isOutgoing ? "document-send" : "download"
            color: row.isOutgoing ? Theme.blue : Theme.green
            size: 22
        }
        Column {
            id: texts

            anchors {
                left: icon.right
                leftMargin: 12
                right: folderButton.left
                rightMargin: 12
                verticalCenter: parent.verticalCenter
            }
            spacing: 2

            Label {
                width: parent.width
                text: Theme.oneLine(row.fileName)
                height: Desktop.lineHeight(font)
                font: Theme.sized(13, Font.Medium)
                elide: Text.ElideMiddle
            }
            Label {
                visible: row.isCompleted
                width: parent.width
                height: Desktop.lineHeight(font)
                text: row.statusText
                font: Theme.sized(11)
                color: Theme.secondary
                elide: Text.ElideRight
            }
            Row {
                visible: !row.isCompleted
                height: Desktop.lineHeight(Theme.sized(11)) // a row is as high before as after
                spacing: 8

                ProgressLine {
                    anchors.verticalCenter: parent.verticalCenter
                    value: row.progress
                    helpText: row.progressText
                }
                Label {
                    anchors.verticalCenter: parent.verticalCenter
                    text: row.progressText
                    font: Theme.sized(9)
                    color: Theme.secondary
                }
            }
        }
        IconButton {
            id: folderButton

            anchors.right: parent.right
            anchors.rightMargin: -6
            anchors.verticalCenter: parent.verticalCenter
            visible: `${row.url}` !== ""
            symbol: "folder-open"
            helpText: "Show in Finder"
            onClicked: row.folderRequested(row.url)
        }
    }
}
