import QtQuick
import QtQuick.Templates as T
import QtQuick.Window
import Brenvale

// A page that scrolls what does not fit, as a column that no wide window stretches. A control that gets the
// keyboard comes into sight.
Flickable {
    id: page

    default property alias content: column.data
    property alias spacing: column.spacing
    property int maximumWidth: Theme.formWidth
    property int padding: Theme.padding

    readonly property Item focused: page.Window.activeFocusItem

    clip: true
    contentWidth: width
    contentHeight: column.implicitHeight + 2 * padding
    boundsBehavior: Flickable.StopAtBounds
    pixelAligned: true
    T.ScrollBar.vertical: ScrollHandle {}

    onFocusedChanged: {
        for (let item = focused; item; item = item.parent) {
            if (item === column) {
                bringIntoSight(focused);
                return;
            }
        }
    }

    function bringIntoSight(item) {
        const top = item.mapToItem(contentItem, 0, 0).y - Theme.padding;
        const bottom = top + item.height + 2 * Theme.padding;
        if (top < contentY) {
            contentY = Math.max(0, top);
        } else if (bottom > contentY + height) {
            contentY = Math.max(0, Math.min(bottom, contentHeight) - height);
        }
    }

    Column {
        id: column

        x: Math.round((page.width - width) / 2)
        y: page.padding
        width: Math.min(page.width - 2 * page.padding, page.maximumWidth)
        spacing: 20
    }
}
