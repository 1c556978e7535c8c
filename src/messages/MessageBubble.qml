import QtQuick
import Brenvale

// One message: at the right what was sent, at the left what came. Its text can be marked and copied.
Item {
    id: row

    required property string body
    required property string shownBody
    required property bool isCut
    required property string timeText
    required property bool isSent
    property bool isCurrent: false
    required property int index
    signal allWanted
    readonly property color bubbleColor: isSent ? Theme.blueFill : Theme.controlBackground
    readonly property color textColor: isSent ? Theme.white : Theme.primary
    readonly property real mostTextWidth: Math.min(0.82 * (width - 2 * 12), 640) - 2 * 12

    implicitHeight: time.y + time.height
    height: implicitHeight

    Accessible.role: Accessible.ListItem
    Accessible.name: `${isSent ? "Sent" : "Received"}, ${timeText}`

    Rectangle {
        id: bubble

        x: row.isSent ? row.width - width - 12 : 12
        width: Math.max(content.width, moreButton.visible ? moreButton.width : 0) + 2 * 12
        height: content.y + content.height + (moreButton.visible ? moreButton.height + 4 : 0) + 8
        radius: Math.min(Theme.bubbleRadius, height / 2)
        color: row.bubbleColor
        border.width: !row.isSent || Theme.isHighContrast ? 1 : 0
        border.color: Theme.isHighContrast ? Theme.primary : Theme.withOpacity(Theme.secondary, 0.15)

        SelectableText {
            id: content

            x: 12
            y: 8
            width: Math.min(Math.ceil(implicitWidth), row.mostTextWidth)
            text: row.shownBody
            wrapMode: TextEdit.Wrap
            color: row.textColor
            selectionColor: row.isSent ? Theme.white : Theme.tint
            selectedTextColor: row.isSent ? row.bubbleColor : Theme.textOnTint
            activeFocusOnTab: false
        }
        PlainButton {
            id: moreButton

            x: 12 - leftPadding
            y: content.y + content.height + 4
            visible: row.isCut
            text: "Show All"
            font: Theme.weighted(Theme.callout, Font.DemiBold)
            color: row.isSent ? Theme.white : Theme.tintText
            onClicked: row.allWanted()
        }
        FocusRing {
            radius: parent.radius + Theme.focusRingWidth + 1
            isShown: row.isCurrent
        }
    }
    Text {
        id: time

        x: row.isSent ? bubble.x + bubble.width - width - 4 : bubble.x + 4
        y: bubble.height + 2
        text: row.timeText
        font: Theme.sized(8)
        color: Theme.secondary
        textFormat: Text.PlainText
        renderType: Text.NativeRendering
        Accessible.ignored: true
    }
}
