import QtQuick
import Brenvale

// Says that the phone's keys and pointer do not reach other programs, and where to change that.
Rectangle {
    id: warning

    required property RemoteControlState remote

    width: parent ? parent.width : implicitWidth
    implicitHeight: column.implicitHeight + 2 * Theme.padding
    radius: Theme.cardRadius
    color: Theme.withOpacity(Theme.orange, 0.1)
    border.width: 1
    border.color: Theme.isHighContrast ? Theme.primary : Theme.withOpacity(Theme.orange, 0.4)

    Column {
        id: column

        x: Theme.padding
        y: Theme.padding
        width: parent.width - 2 * Theme.padding
        spacing: 10

        Row {
            spacing: Theme.spacing

            Symbol {
                anchors.verticalCenter: parent.verticalCenter
                name: "security-medium"
                color: Theme.strengthened(Theme.orange, Theme.mixed(Theme.windowBackground, Theme.orange, 0.1), 3)
                size: 22
            }
            Label {
                anchors.verticalCenter: parent.verticalCenter
                text: "Accessibility Access Required"
                font: Theme.headline
            }
        }
        Label {
            width: parent.width
            text: "Brenvale needs Accessibility permission to control media, presentation slides, and system features "
                + "like locking or sleeping your Mac."
            font: Theme.subheadline
            wrapMode: Text.Wrap
        }
        Row {
            spacing: 12

            TextButton {
                controlSize: "small"
                isProminent: true
                text: "Open System Settings"
                onClicked: warning.remote.openAccessibilitySettings()
            }
            TextButton {
                controlSize: "small"
                text: "Refresh Status"
                onClicked: warning.remote.refreshAccessibility()
            }
        }
        Label {
            width: parent.width
            text: "Note: If permission is already granted, try removing Brenvale from the list and adding it again."
            font: Theme.caption2
            color: Theme.secondary
            wrapMode: Text.Wrap
        }
    }
}
