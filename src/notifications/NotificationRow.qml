import QtQuick
import Brenvale

ListRow {
    id: row

    required property SettingsView view
    required property string rowId
    required property string badge
    required property string shownApp
    required property string shownTitle
    required property string body
    required property string timeText
    readonly property bool isReplying: view.replyingTo === rowId

    hairlineInset: Theme.padding + mark.width + 10

    Accessible.name: shownApp + (shownTitle === "" ? "" : ", " + shownTitle) + (body === "" ? "" : ", " + body)

    Item {
        width: parent.width
        implicitHeight: Math.max(mark.height, texts.implicitHeight)

        Avatar {
            id: mark

            radius: 6
            letter: row.badge
        }
        Column {
            id: texts

            anchors {
                left: mark.right
                leftMargin: 10
                right: parent.right
            }
            spacing: 2

            Item {
                width: parent.width
                implicitHeight: app.implicitHeight

                Label {
                    id: app

                    width: Math.min(implicitWidth, parent.width - time.implicitWidth - Theme.spacing)
                    text: row.shownApp
                    font: Theme.weighted(Theme.caption, Font.DemiBold)
                    color: Theme.secondary
                    elide: Text.ElideRight
                }
                Label {
                    id: time

                    anchors.right: parent.right
                    anchors.baseline: app.baseline
                    text: row.timeText
                    font: Theme.caption2
                    color: Theme.tertiary
                }
            }
            Label {
                visible: text !== ""
                width: parent.width
                text: row.shownTitle
                font: Theme.weighted(Theme.callout, Font.Medium)
                elide: Text.ElideRight
                maximumLineCount: 1
            }
            Label {
                visible: text !== ""
                width: parent.width
                text: row.body
                font: Theme.caption
                color: Theme.secondary
                wrapMode: Text.Wrap
                elide: Text.ElideRight
                maximumLineCount: 2
            }
            PlainButton {
                visible: !row.isReplying
                leftPadding: 0
                text: "Reply"
                font: Theme.caption
                onClicked: row.view.openReply(row.rowId)
            }
            Loader {
                readonly property bool isWanted: row.isReplying

                width: parent.width
                visible: isWanted
                onIsWantedChanged: load()
                Component.onCompleted: load()

                function load() {
                    if (isWanted) {
                        setSource("ReplyLine.qml", {view: row.view, rowId: row.rowId});
                    } else {
                        source = "";
                    }
                }
            }
        }
    }
}
