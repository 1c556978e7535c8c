import QtQuick
import Brenvale

ListRow {
    id: row

    required property string text
    required property string dateText
    signal copyRequested(string content)

    hairlineInset: Theme.padding + icon.width + 12

    Accessible.name: row.text

    Item {
        width: parent.width
        implicitHeight: Math.max(texts.implicitHeight, copyButton.height)

        Symbol {
            id: icon

            y: 2
            name: "format-justify-left"
            color: Theme.blue
        }
        Column {
            id: texts

            anchors {
                left: icon.right
                leftMargin: 12
                right: copyButton.left
                rightMargin: 12
            }
            spacing: 4

            CutText {
                width: parent.width
                content: row.text
                maximumLineCount: 10
            }
            Label {
                text: row.dateText
                font: Theme.sized(10)
                color: Theme.secondary
            }
        }
        IconButton {
            id: copyButton

            anchors.right: parent.right
            anchors.rightMargin: -6
            y: -6
            symbol: "edit-copy"
            helpText: "Copy to Mac Clipboard"
            onClicked: row.copyRequested(row.text)
        }
    }
}
