import QtQuick
import Brenvale

// The line to type a message in.
Item {
    id: input

    required property SendSmsState sms

    implicitHeight: capsule.height + 2 * 12

    readonly property alias field: field

    Rectangle {
        id: capsule

        anchors {
            left: parent.left
            leftMargin: Theme.padding
            right: sendButton.left
            rightMargin: 10 - 4 // the button has the rest around its picture
            verticalCenter: parent.verticalCenter
        }
        height: Math.ceil(metrics.height) + 2 * 6
        radius: Math.min(18, height / 2)
        color: Theme.controlBackground
        border.width: field.activeFocus ? 0 : 1
        border.color: Theme.isHighContrast ? Theme.primary : Theme.withOpacity(Theme.secondary, 0.2)

        FontMetrics {
            id: metrics

            font: field.font
        }
        TextInputField {
            id: field

            anchors {
                fill: parent
                leftMargin: 12
                rightMargin: 12
            }
            clip: true
            hasFrame: false
            placeholderText: "Text Message"
            text: input.sms.chatText
            onTextEdited: input.sms.chatText = text
            onAccepted: input.sms.sendChatMessage()
        }
        FocusRing {
            anchors.margins: -Theme.focusRingWidth
            radius: parent.radius + Theme.focusRingWidth
            isShown: field.activeFocus
        }
    }
    IconButton {
        id: sendButton

        anchors {
            right: parent.right
            rightMargin: Theme.padding - 4
            verticalCenter: parent.verticalCenter
        }
        enabled: input.sms.chatText !== ""
        opacity: 1
        isRound: true
        size: 34
        symbol: "arrow-up"
        decoration: "circle"
        symbolSize: 26
        color: enabled ? Theme.blue : Theme.secondary
        helpText: "Send message"
        onClicked: input.sms.sendChatMessage()
    }
}
