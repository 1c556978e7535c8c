import QtQuick
import Brenvale

// One thread: with whom, what was said, and what to say.
Item {
    id: thread

    required property SendSmsState sms

    readonly property Item field: input.field

    ThreadHeader {
        id: header

        width: parent.width
        sms: thread.sms
    }
    Hairline {
        id: headerLine

        anchors.top: header.bottom
        width: parent.width
    }
    Rectangle {
        anchors {
            top: headerLine.bottom
            bottom: inputLine.top
            left: parent.left
            right: parent.right
        }
        color: Theme.underPageBackground

        MessageList {
            anchors.fill: parent
            sms: thread.sms
        }
    }
    Hairline {
        id: inputLine

        anchors.bottom: input.top
        width: parent.width
    }
    MessageInput {
        id: input

        anchors.bottom: parent.bottom
        width: parent.width
        sms: thread.sms
    }
}
