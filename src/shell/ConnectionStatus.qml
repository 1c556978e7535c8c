import QtQuick
import Brenvale

// Whether the phone is linked, and what it tells of itself.
Item {
    id: status

    required property SettingsState settings

    implicitHeight: settings.isConnected ? connected.implicitHeight : disconnected.implicitHeight

    Item {
        id: connected

        anchors.fill: parent
        visible: status.settings.isConnected
        implicitHeight: Math.max(mark.height, names.implicitHeight)

        Symbol {
            id: mark

            anchors.verticalCenter: parent.verticalCenter
            name: "checkmark"
            decoration: "circle"
            color: Theme.green
            size: 18
        }
        Column {
            id: names

            anchors {
                left: mark.right
                leftMargin: Theme.spacing
                right: battery.left
                rightMargin: Theme.spacing
                verticalCenter: parent.verticalCenter
            }
            spacing: 2

            Label {
                visible: text !== ""
                width: parent.width
                text: Theme.oneLine(status.settings.deviceName)
                font: Theme.headline
                elide: Text.ElideRight
            }
            Label {
                width: parent.width
                text: Theme.oneLine(status.settings.networkText)
                font: Theme.caption
                color: Theme.secondary
                elide: Text.ElideRight
            }
        }
        Row {
            id: battery

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            visible: status.settings.batteryText !== ""
            width: visible ? implicitWidth : 0
            spacing: 4

            Symbol {
                anchors.verticalCenter: parent.verticalCenter
                name: status.settings.isCharging ? "battery-100-charging" : "battery-100"
                color: status.settings.isBatteryLow ? Theme.red : Theme.primary
            }
            Label {
                anchors.verticalCenter: parent.verticalCenter
                text: status.settings.batteryText
                font: Theme.caption
                Accessible.name: text + (status.settings.isCharging ? ", charging" : "")
            }
        }
    }
    Column {
        id: disconnected

        width: parent.width
        visible: !status.settings.isConnected
        spacing: 4

        Row {
            spacing: 6

            Symbol {
                anchors.verticalCenter: parent.verticalCenter
                name: "data-warning"
                color: Theme.red
            }
            Label {
                text: "Not Connected"
                font: Theme.weighted(Theme.body, Font.Bold)
                color: Theme.readable(Theme.red)
            }
        }
        Label {
            width: parent.width
            text: "Download 'Brenvale Android' and enter this IP and Port in the app settings to link your devices."
            font: Theme.caption
            color: Theme.secondary
            wrapMode: Text.Wrap
        }
    }
}
