import QtQuick
import Brenvale

// The panel of a ringing call.
CallPanel {
    id: panel

    required property IncomingCall banner

    iconColor: Theme.green
    firstLine: panel.banner.firstLine
    secondLine: panel.banner.secondLine
    thirdLine: "Incoming Call"

    CallPanelButton {
        text: "Decline"
        symbol: "call-stop"
        fill: Theme.red
        onClicked: panel.banner.hangUp()
    }
    CallPanelButton {
        text: "Accept"
        symbol: "call-start"
        fill: Theme.green
        onClicked: panel.banner.answer()
    }
}
