import QtQuick
import Brenvale

// With whom the thread is, and the SIM that answers.
Item {
    id: header

    required property SendSmsState sms

    implicitHeight: Math.max(names.implicitHeight, Theme.smallControlHeight) + 2 * 12

    Column {
        id: names

        anchors {
            left: parent.left
            leftMargin: Theme.padding
            right: sims.left
            rightMargin: Theme.spacing
            verticalCenter: parent.verticalCenter
        }
        spacing: 2

        Label {
            width: parent.width
            text: Theme.oneLine(header.sms.threadName)
            font: Theme.headline
            elide: Text.ElideRight
            horizontalAlignment: Text.AlignLeft
            maximumLineCount: 1
            Accessible.role: Accessible.Heading
        }
        Label {
            visible: header.sms.showsThreadAddress
            width: parent.width
            text: Theme.oneLine(header.sms.activeRecipient)
            font: Theme.caption
            color: Theme.secondary
            elide: Text.ElideRight
            horizontalAlignment: Text.AlignLeft
            maximumLineCount: 1
        }
    }
    Item {
        id: sims

        readonly property bool isEmpty: header.sms.sims.simCarriers.length === 0

        anchors {
            right: parent.right
            rightMargin: Theme.padding
            verticalCenter: parent.verticalCenter
        }
        width: isEmpty ? noSim.implicitWidth : picker.width
        height: Math.max(noSim.height, picker.height)

        Label {
            id: noSim

            anchors.verticalCenter: parent.verticalCenter
            visible: sims.isEmpty
            text: "No SIM connected"
            font: Theme.caption2
            color: Theme.readable(Theme.red)
        }
        MenuPicker {
            id: picker

            visible: !sims.isEmpty
            width: 120
            controlSize: "small"
            helpText: "SIM:"
            model: header.sms.sims.simCarriers
            selectedIndex: header.sms.sims.selectedSimIndex
            onPicked: index => header.sms.sims.selectedSimIndex = index
        }
    }
}
