import QtQuick
import Brenvale

// A row of a list: what the list shows of one record, with a hairline to the next one.
Item {
    id: row

    required property int index
    property real verticalPadding: Theme.rowPaddingVertical
    property real hairlineInset: Theme.padding
    default property alias content: place.data

    width: ListView.view ? ListView.view.width : implicitWidth
    implicitHeight: place.implicitHeight + 2 * verticalPadding

    Accessible.role: Accessible.ListItem

    Item {
        id: place

        x: Theme.padding
        y: row.verticalPadding
        width: row.width - 2 * Theme.padding
        implicitHeight: children.length > 0 ? children[0].implicitHeight : 0
        height: implicitHeight
    }
    Hairline {
        visible: row.index > 0
        x: row.hairlineInset
        width: parent.width - x
    }
}
