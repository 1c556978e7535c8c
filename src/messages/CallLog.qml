pragma ComponentBehavior: Bound

import QtQuick
import Brenvale

// The phone's calls in its own order. A click calls again at once.
Item {
    id: log

    required property CallsState calls

    Label {
        id: title

        x: Theme.padding
        y: 20
        text: "Recent Calls"
        font: Theme.headline
        Accessible.role: Accessible.Heading
    }
    Label {
        anchors.top: title.bottom
        padding: Theme.padding
        visible: list.count === 0
        text: "No recent calls"
        color: Theme.secondary
    }
    ScrollList {
        id: list

        anchors {
            fill: parent
            topMargin: title.y + title.height + Theme.spacing
        }
        helpText: "Recent Calls"
        model: log.calls.phoneCallLog
        reuseItems: true
        activeFocusOnTab: count > 0
        bottomMargin: Theme.spacing

        onActiveFocusChanged: if (activeFocus && currentIndex < 0) currentIndex = 0
        Keys.onReturnPressed: callCurrent()
        Keys.onEnterPressed: callCurrent()
        Keys.onSpacePressed: callCurrent()

        function callCurrent() {
            if (currentItem) {
                log.calls.redial((currentItem as CallRow).number);
            }
        }

        delegate: CallRow {
            width: ListView.view.width
            isCurrent: list.activeFocus && ListView.isCurrentItem
            onClicked: log.calls.redial(number)
            ListView.onPooled: visible = false // a row in reserve is not to be read out
            ListView.onReused: visible = true
        }
    }
}
