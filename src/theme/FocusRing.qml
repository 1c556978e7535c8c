import QtQuick
import Brenvale

// Shows which control the keyboard acts on. Stands inside the control and draws outside of it.
Rectangle {
    id: ring

    required property bool isShown

    anchors.fill: parent
    anchors.margins: -Theme.focusRingWidth - 1
    radius: Theme.controlRadius + Theme.focusRingWidth + 1
    color: "transparent"
    border.width: Theme.focusRingWidth
    border.color: Theme.focusRing
    visible: isShown
}
