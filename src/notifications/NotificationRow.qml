import QtQuick
import Brenvale

ListRow {
    id: row

    required property NotificationsState notifications
    required property string rowId
    required property string badge
    required property string shownApp
    required property string shownTitle
    required property string body
    required property string timeText
    readonly property bool isReplying: notifications.replyingTo === rowId

    // What a label gets of a text, which may be a book: more than its lines hold.
    readonly property string beginningOfApp: beginning(shownApp)
    readonly property string beginningOfTitle: beginning(shownTitle)
    readonly property string beginningOfBody: beginning(body)

    verticalPadding: 2 + Theme.listRowInset
    hairlineInset: Theme.padding + mark.width + 10

    Keyboard.home: replyButton // when the line closes
    Accessible.name: beginningOfApp + (beginningOfTitle === "" ? "" : ", ") + beginningOfTitle
                     + (beginningOfBody === "" ? "" : ", ") + beginningOfBody

    function beginning(whole) {
        return whole.slice(0, 1200).replace(/[\uD800-\uDBFF]$/, ""); // no half of a pair
    }

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
                implicitHeight: app.height

                Label {
                    id: app

                    width: Math.min(implicitWidth, parent.width - time.implicitWidth - Theme.spacing)
                    text: Theme.oneLine(row.beginningOfApp)
                    height: Desktop.lineHeight(font)
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
                text: Theme.oneLine(row.beginningOfTitle)
                height: Desktop.lineHeight(font)
                font: Theme.weighted(Theme.callout, Font.Medium)
                elide: Text.ElideRight
                maximumLineCount: 1
            }
            Label {
                visible: text !== ""
                width: parent.width
                text: row.beginningOfBody
                font: Theme.caption
                color: Theme.secondary
                wrapMode: Text.Wrap
                elide: Text.ElideRight
                maximumLineCount: 2
            }
            PlainButton {
                id: replyButton

                visible: !replyLine.item
                leftPadding: 0
                text: "Reply"
                font: Theme.caption
                onClicked: {
                    row.notifications.openReply(row.rowId);
                    (replyLine.item as ReplyLine).field.forceActiveFocus();
                }
            }
            Loader {
                id: replyLine

                readonly property bool isWanted: row.isReplying

                width: parent.width
                visible: isWanted
                onIsWantedChanged: load()
                Component.onCompleted: load()

                function load() {
                    if (isWanted) {
                        setSource("ReplyLine.qml", {notifications: row.notifications, rowId: row.rowId});
                    } else {
                        source = "";
                    }
                }
            }
        }
    }
}
