import QtQuick
import Brenvale

// The panel of a running call.
CallPanel {
    id: panel

    required property ActiveCall banner

    iconColor: Theme.blue
    firstLine: panel.banner.firstLine
    secondLine: panel.banner.secondLine
    thirdLine: panel.banner.thirdLine

    CallPanelButton {
        text: panel.banner.isMuted ? "Unmute" : "Mute"
        symbol: panel.banner.isMuted ? "microphone-sensitivity-muted" : "microphone-sensitivity-high"
        fill: panel.banner.isMuted ? Theme.strengthened(Theme.blue, Theme.white, 3) : Theme.withOpacity(Theme.grey, 0.3)
        color: panel.banner.isMuted ? Theme.white : Theme.primary
        onClicked: panel.banner.toggleMute()
    }
    CallPanelButton {
        text: "End call"
        symbol: "call-stop"
        fill: Theme.strengthened(Theme.red, Theme.white, 3)
        onClicked: panel.banner.hangUp()
    }
}
