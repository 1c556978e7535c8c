import QtQuick
import QtQuick.Templates as T
import Brenvale

// The scroll bar of all views: thin, and stronger under the pointer.
T.ScrollBar {
    id: control

    implicitWidth: 10
    implicitHeight: 10
    padding: 2
    minimumSize: 0.06
    visible: size < 1

    Accessible.role: Accessible.ScrollBar
    Accessible.ignored: true

    contentItem: Rectangle {
        implicitWidth: 6
        implicitHeight: 6
        radius: 3
        color: Theme.withOpacity(Theme.primary, control.pressed ? 0.5 : control.hovered ? 0.4 : 0.25)
    }
}
