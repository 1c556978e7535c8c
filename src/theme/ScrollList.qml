import QtQuick
import QtQuick.Templates as T
import Brenvale

// A list that scrolls. It has no current row until somebody walks through it: a view gives its current row the keyboard
// when rows come or go, away from what the user types into.
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
}
