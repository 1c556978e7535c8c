pragma ComponentBehavior: Bound

import QtQuick
import Brenvale

// A number, the keys to dial it with, and what to do with it. Takes the keyboard as well; the arrow keys walk through
// its buttons.
Item {
    id: pad

    required property CallsState calls
    readonly property bool isEmpty: calls.dialpadNumber === ""

    // The gaps give way where the window is low.
    readonly property real gaps: 20 + 20 + 3 * 15 + 20 + 10
    readonly property real roomForGaps: height - 60 - keys.rows * 70 - 72 - Theme.spacing
    readonly property real squeeze: Math.max(0, Math.min(1, roomForGaps / gaps))

    readonly property alias display: display

    Accessible.role: Accessible.Grouping
    Accessible.name: "Dial pad"
    Keys.onPressed: event => event.accepted = pad.walk(event.key)
                                             || pad.calls.dialpadKeyPressed(event.key, event.text)

    // The display stands above the keys, the buttons below their columns.
    function walk(key) {
        const columns = keys.columns;
        const places = [];
        for (let place = 0; place < keyButtons.count; ++place) {
            places.push(keyButtons.itemAt(place));
        }
        places.push(null, callButton, deleteButton);
        const steps = {[Qt.Key_Left]: -1, [Qt.Key_Right]: 1, [Qt.Key_Up]: -columns, [Qt.Key_Down]: columns};
        const step = steps[key];
        const start = places.findIndex(button => button && button.activeFocus);
        if (step === undefined || (start < 0 && !(display.activeFocus && step > 0))) {
            return false;
        }
        const next = start < 0 ? 0 : start + step;
        const isInRow = Math.abs(step) === columns || Math.floor(next / columns) === Math.floor(start / columns);
        // Below the outer columns there may be nothing to press: the call button is the nearest.
        const button = places[next] && places[next].enabled ? places[next]
                     : next >= keyButtons.count && step === columns ? callButton : null;
        const target = start >= 0 && next < 0 && step === -columns ? display : isInRow ? button : null;
        if (target && target.enabled) {
            target.forceActiveFocus(Qt.TabFocusReason);
        }
        return true;
    }

    Item {
        id: display

        readonly property string text: pad.calls.dialpadNumber
        property string toldText: text

        y: 20 * pad.squeeze
        width: parent.width
        height: 60
        activeFocusOnTab: true

        Accessible.role: Accessible.EditableText
        Accessible.name: "Number"
        onTextChanged: {
            Desktop.tellText(display, toldText, text);
            toldText = text;
        }

        Text {
            anchors.fill: parent
            leftPadding: Theme.padding
            rightPadding: Theme.padding
            text: pad.isEmpty ? " " : display.text
            font: Theme.fitted(38, 44, Font.Light)
            color: Theme.primary
            elide: Text.ElideLeft
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
            textFormat: Text.PlainText
            renderType: Text.NativeRendering
            Accessible.ignored: true
        }
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
            id: keyButtons

            model: pad.calls.dialButtons

            delegate: DialKey {
                required property var modelData

                text: modelData.main
                letters: modelData.letters
                onClicked: pad.calls.appendToDialpadNumber(text)
            }
        }
    }
    Row {
        x: Math.round(keys.x + keys.width / 2 - (55 + spacing + 72 / 2)) // the call button is below the 0
        y: keys.y + keys.height + (20 + 10) * pad.squeeze
        spacing: 25

        Item {
            anchors.verticalCenter: parent.verticalCenter
            width: 55
            height: sims.height

            SegmentedPicker {
                id: sims

                width: parent.width
                visible: pad.calls.sims.showsDialerSims
                helpText: "SIM"
                labels: ["1", "2"]
                selectedIndex: pad.calls.sims.dialerSimIndex
                onPicked: index => pad.calls.sims.dialerSimIndex = index
            }
        }
        CallButton {
            id: callButton

            enabled: !pad.isEmpty
            onClicked: pad.calls.startCall()
        }
        Item {
            anchors.verticalCenter: parent.verticalCenter
            width: 50
            height: 50

            IconButton {
                id: deleteButton

                anchors.fill: parent
                enabled: !pad.isEmpty
                opacity: enabled ? 1 : 0
                focusPolicy: Qt.TabFocus
                autoRepeat: true
                isRound: true
                symbol: "edit-clear-locationbar-rtl"
                symbolSize: 22
                helpText: "Delete digit"
                onClicked: pad.calls.removeLastFromDialpadNumber()
            }
        }
    }
}
