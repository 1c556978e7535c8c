pragma ComponentBehavior: Bound

import QtQuick
import Brenvale

// A cross of five keys.
ControlGroup {
    id: pad

    required property RemoteControlState remote
    readonly property var keys: remote.dPadButtons

    title: "D-Pad"
    isCentred: true
    titleGap: 6
    spacing: 4

    component Key: PadButton {
        onClicked: pad.remote.sendNavCommand(modelData.command)
    }

    Key {
        anchors.horizontalCenter: parent.horizontalCenter
        modelData: pad.keys[0]
        implicitWidth: 44
        implicitHeight: 36
    }
    Row {
        spacing: 4

        Key {
            modelData: pad.keys[1]
            implicitWidth: 36
            implicitHeight: 44
        }
        Key {
            modelData: pad.keys[2]
            implicitWidth: 44
            implicitHeight: 44
        }
        Key {
            modelData: pad.keys[3]
            implicitWidth: 36
            implicitHeight: 44
        }
    }
    Key {
        anchors.horizontalCenter: parent.horizontalCenter
        modelData: pad.keys[4]
        implicitWidth: 44
        implicitHeight: 36
    }
}
