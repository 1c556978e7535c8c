import QtQuick
import Brenvale

// The dial pad at the left, the phone's calls at the right.
Item {
    id: tab

    required property CallsState calls

    Keyboard.home: pad.display
    Keyboard.isEager: true

    DialPad {
        id: pad

        width: 320
        height: parent.height
        calls: tab.calls
    }
    Hairline {
        id: divider

        x: pad.width
        height: parent.height
    }
    CallLog {
        anchors {
            left: divider.right
            right: parent.right
            top: parent.top
            bottom: parent.bottom
        }
        calls: tab.calls
    }

    // What is typed in the log is the pad's too, but a call is placed from the pad alone.
    Keys.onPressed: event => {
        if (event.key !== Qt.Key_Return && event.key !== Qt.Key_Enter) {
            event.accepted = tab.calls.dialpadKeyPressed(event.key, event.text);
        }
    }
}
