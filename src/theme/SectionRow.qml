import QtQuick
import Brenvale

// A row of a form: its label at the left, what it shows at the right, or alone where there is no label.
Item {
    id: row

    property string label
    property string symbol
    property color symbolColor: Theme.primary
    default property alias content: place.data

    // Content that is to fill the row beside the label takes this width.
    readonly property real contentWidth: width - place.x - Theme.cardInset

    width: parent ? parent.width : implicitWidth
    implicitHeight: Math.max(44, place.implicitHeight + 2 * Theme.rowPaddingVertical,
                             caption.implicitHeight + 2 * Theme.rowPaddingVertical)
    height: implicitHeight

    Hairline {
        visible: row.y > 0
        x: Theme.cardInset
        width: parent.width - 2 * Theme.cardInset
    }
    Symbol {
        id: icon

        visible: row.symbol !== ""
        x: Theme.cardInset
        anchors.verticalCenter: parent.verticalCenter
        name: row.symbol
        color: row.symbolColor
    }
    Label {
        id: caption

        x: Theme.cardInset + (icon.visible ? icon.width + Theme.spacing : 0)
        anchors.verticalCenter: parent.verticalCenter
        text: row.label
    }
    Item {
        id: place

        x: row.label === "" ? Theme.cardInset
                            : caption.x + Math.ceil(caption.implicitWidth) + Theme.padding
        anchors.verticalCenter: parent.verticalCenter
        width: row.contentWidth
        implicitHeight: children.length > 0 ? children[0].implicitHeight : 0
        height: implicitHeight
    }
}
