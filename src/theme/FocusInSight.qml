import QtQuick
import QtQuick.Window
import Brenvale

// Scrolls `view` to the control in it that gets the keyboard. What the pointer marks text in stays where it is.
QtObject {
    id: sight

    required property Flickable view
    readonly property Item focused: view.Window.activeFocusItem

    onFocusedChanged: {
        for (let item = focused; item; item = item.parent) {
            if (item === view.contentItem) {
                bringIntoSight();
                return;
            }
        }
    }

    function bringIntoSight() {
        const text = focused as SelectableText;
        if (text && text.focusReason === Qt.MouseFocusReason) {
            return;
        }
        const top = focused.mapToItem(view.contentItem, 0, 0).y - Theme.padding;
        const bottom = top + focused.height + 2 * Theme.padding;
        const start = view.originY;
        if (top < view.contentY) {
            view.contentY = Math.max(start, top);
        } else if (bottom > view.contentY + view.height) {
            view.contentY = Math.max(start, Math.min(bottom, start + view.contentHeight) - view.height);
        }
    }
}
