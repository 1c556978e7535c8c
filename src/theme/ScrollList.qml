import QtQuick
import QtQuick.Templates as T
import Brenvale

// A list that scrolls, with the keyboard too. It has no current row until somebody walks through it: a view gives
// its current row the keyboard when rows come or go, away from what the user types into.
ListView {
    id: list

    required property string helpText

    clip: true
    boundsBehavior: Flickable.StopAtBounds
    reuseItems: false
    currentIndex: -1
    keyNavigationEnabled: activeFocusOnTab
    pixelAligned: true
    T.ScrollBar.vertical: ScrollHandle {}

    Accessible.role: Accessible.List
    Accessible.name: helpText

    // As Tab does, for controls that keep Tab from being a shortcut, as texts do.
    function step(isForward: bool) {
        steps.go(isForward);
    }

    Keys.onPressed: event => {
        if (event.key === Qt.Key_PageDown) {
            list.contentY = Math.min(list.contentY + list.height, list.originY + list.contentHeight - list.height);
            list.returnToBounds();
            event.accepted = true;
        } else if (event.key === Qt.Key_PageUp) {
            list.contentY = Math.max(list.contentY - list.height, list.originY);
            event.accepted = true;
        }
    }

    FocusInSight {
        view: list
    }
    RowSteps {
        id: steps

        view: list
    }
}
