pragma ComponentBehavior: Bound

import QtQuick
import Brenvale

// What plays on the phone, and how loud.
Row {
    id: buttons

    required property RemoteControlState remote

    spacing: 20

    ControlGroup {
        title: "Media"
        spacing: 8

        Row {
            spacing: 8

            Repeater {
                model: buttons.remote.mediaButtons

                delegate: PadButton {
                    controlSize: "large"
                    implicitWidth: 48
                    onClicked: buttons.remote.sendMediaCommand(modelData.command)
                }
            }
        }
    }
    Hairline {
        anchors.verticalCenter: parent.verticalCenter
        height: 50
    }
    ControlGroup {
        title: "Volume"
        spacing: 8

        Row {
            spacing: 8

            Repeater {
                model: buttons.remote.volumeButtons

                delegate: PadButton {
                    y: (Theme.largeControlHeight - height) / 2 // on the axis of the larger ones
                    implicitWidth: 40
                    onClicked: buttons.remote.sendMediaCommand(modelData.command)
                }
            }
        }
    }
}
