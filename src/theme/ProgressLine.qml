import QtQuick
import Brenvale

// How much is done, from 0 to 1.
Rectangle {
    id: line

    required property real value
    required property string helpText

    implicitWidth: 100
    implicitHeight: 3
    radius: height / 2
    color: Theme.withOpacity(Theme.primary, 0.15)

    Accessible.role: Accessible.ProgressBar
    Accessible.name: helpText

    Rectangle {
        width: parent.width * Math.min(Math.max(line.value, 0), 1)
        height: parent.height
        radius: parent.radius
        color: Theme.tint
    }
}
