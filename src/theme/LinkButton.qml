import QtQuick
import Brenvale

// Opens a page in the browser.
PlainButton {
    id: link

    required property url target

    font: Theme.subheadline
    onClicked: Qt.openUrlExternally(target)

    Accessible.role: Accessible.Link

    HoverHandler {
        cursorShape: Qt.PointingHandCursor
    }
}
