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
        helpText: "Decline"
        symbol: "call-stop"
        fill: Theme.strengthened(Theme.red, Theme.white, 3)
        onClicked: panel.banner.hangUp()
    }
    CallPanelButton {
        text: "Accept"
        helpText: "Accept"
        symbol: "call-start"
        fill: Theme.strengthened(Theme.green, Theme.white, 3)
        onClicked: panel.banner.answer()
    }
}
