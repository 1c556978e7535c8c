pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Window
import Brenvale

// A number, the keys to dial it with, and what to do with it. Takes the keyboard as well.
FocusScope {
    id: pad

    required property SettingsView view
    readonly property bool isEmpty: view.dialpadNumber === ""

    // The gaps give way where the window is low.
    readonly property real gaps: 20 + 20 + 3 * 15 + 20 + 10
    readonly property real roomForGaps: height - 60 - keys.rows * 70 - 72 - Theme.spacing
    readonly property real squeeze: Math.max(0, Math.min(1, roomForGaps / gaps))

    Component.onCompleted: takeKeyboard()
    Keys.onPressed: event => event.accepted = pad.view.dialpadKeyPressed(event.key, event.text)

    // Whoever walks through the sidebar by keyboard stays there; the keys come from there as well.
    function takeKeyboard() {
        for (let owner = Window.activeFocusItem; owner; owner = owner.parent) {
            if (owner.activeFocusOnTab) {
                return;
            }
        }
        forceActiveFocus();
    }

    Label {
        id: display

        y: 20 * pad.squeeze
        width: parent.width
        height: 60
        leftPadding: Theme.padding
        rightPadding: Theme.padding
        text: pad.isEmpty ? " " : pad.view.dialpadNumber
        font: Theme.sized(38, Font.Light)
        elide: Text.ElideLeft
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        Accessible.ignored: pad.isEmpty
    }
    Grid {
        id: keys

        anchors.horizontalCenter: parent.horizontalCenter
        y: display.y + display.height + 20 * pad.squeeze
        columns: 3
        rows: 4
        columnSpacing: 15
        rowSpacing: 15 * pad.squeeze

        Repeater {
            model: pad.view.dialButtons

            delegate: DialKey {
                required property var modelData

                text: modelData.main
                letters: modelData.letters
                onClicked: pad.view.appendToDialpadNumber(text)
            }
        }
    }
    Row {
        anchors.horizontalCenter: parent.horizontalCenter
        y: keys.y + keys.height + (20 + 10) * pad.squeeze
        spacing: 25

        Item {
            anchors.verticalCenter: parent.verticalCenter
            width: 55
            height: sims.height

            SegmentedPicker {
                id: sims

                width: parent.width
                visible: pad.view.showsDialerSims
                helpText: "SIM"
                labels: ["1", "2"]
                selectedIndex: pad.view.dialerSimIndex
                onPicked: index => pad.view.dialerSimIndex = index
            }
        }
        CallButton {
            enabled: !pad.isEmpty
            onClicked: pad.view.startCall()
        }
        Item {
            anchors.verticalCenter: parent.verticalCenter
            width: 50
            height: 50

            IconButton {
                anchors.fill: parent
                enabled: !pad.isEmpty
                opacity: enabled ? 1 : 0
                focusPolicy: Qt.TabFocus
                autoRepeat: true
                isRound: true
                symbol: "edit-clear-locationbar-rtl"
                symbolSize: 22
                helpText: "Delete digit"
                onClicked: pad.view.removeLastFromDialpadNumber()
            }
        }
    }
}
