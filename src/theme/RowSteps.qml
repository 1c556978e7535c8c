import QtQuick
import QtQuick.Window
import Brenvale

// Tab goes through the controls in the rows of `view` from top to bottom, and back. Left alone, it would take the rows
// in the order in which the view made them, and miss those that it has not made.
Item {
    id: steps

    required property ListView view
    readonly property Item focused: view.Window.activeFocusItem
    readonly property ListRow row: rowOf(focused)

    Shortcut {
        sequence: "Tab"
        enabled: steps.row !== null
        onActivated: steps.go(true)
    }
    Shortcut {
        sequence: "Shift+Tab"
        enabled: steps.row !== null
        onActivated: steps.go(false)
    }

    function rowOf(control: Item): ListRow {
        let item = control;
        while (item && item.parent !== view.contentItem) {
            item = item.parent;
        }
        return item as ListRow;
    }

    function go(isForward: bool) {
        let next = focused.nextItemInFocusChain(isForward);
        if (rowOf(next) !== row) {
            next = controlOfNeighbour(isForward) ?? controlBeyond(next, isForward);
        }
        next.forceActiveFocus(isForward ? Qt.TabFocusReason : Qt.BacktabFocusReason);
    }

    // Of the nearest row that has one.
    function controlOfNeighbour(isForward: bool): Item {
        const step = isForward ? 1 : -1;
        for (let index = row.index + step; index >= 0 && index < view.count; index += step) {
            if (!view.itemAtIndex(index)) {
                view.positionViewAtIndex(index, ListView.Contain);
            }
            const control = controlIn(view.itemAtIndex(index), isForward);
            if (control) {
                return control;
            }
        }
        return null;
    }

    // The first control of a row, or the last.
    function controlIn(place: Item, isFirst: bool): Item {
        let control = null;
        let item = place.nextItemInFocusChain();
        while (rowOf(item) === place && !(control && isFirst)) {
            control = item;
            item = item.nextItemInFocusChain();
        }
        return control;
    }

    // What follows in the window, from `control` on.
    function controlBeyond(control: Item, isForward: bool): Item {
        let item = control;
        while (rowOf(item)) {
            item = item.nextItemInFocusChain(isForward);
        }
        return item;
    }
}
