pragma ComponentBehavior: Bound

import QtQuick
import Brenvale

// The phone's navigation keys in three groups.
Row {
    id: buttons

    required property RemoteControlState remote

    // The gaps beside the dividers give way where the window is narrow.
    readonly property real groupsWidth: dPad.width + core.width + system.width + 2
    readonly property real room: parent ? parent.width : 0

    spacing: Math.max(8, Math.min(30, Math.floor((room - groupsWidth) / 4)))

    DPad {
        id: dPad

        remote: buttons.remote
    }
    Hairline {
        height: 140
    }
    ControlGroup {
        id: core

        title: "Core"
        spacing: 8

        Repeater {
            model: buttons.remote.coreButtons

            delegate: NavButton {
                onClicked: buttons.remote.sendNavCommand(modelData.command)
            }
        }
    }
    Hairline {
        height: 140
    }
    ControlGroup {
        id: system

        title: "System"
        spacing: 8

        Repeater {
            model: buttons.remote.systemButtons

            delegate: NavButton {
                onClicked: buttons.remote.sendNavCommand(modelData.command)
            }
        }
    }
}
