import QtQuick
import QtQuick.Templates as T
import Brenvale

// One entry of the sidebar.
T.ItemDelegate {
    id: row

    required property string label
    required property string symbol
    property bool isSelected: false
    property bool showsLabel: true
    readonly property color contentColor: isSelected ? Theme.textOnTint : Theme.primary

    implicitHeight: Math.max(32, Theme.controlHeight + 4)
    focusPolicy: Qt.NoFocus

    Accessible.role: Accessible.ListItem
    Accessible.name: label
    Accessible.selectable: true
    Accessible.selected: isSelected
    Accessible.onPressAction: row.clicked()

    contentItem: Item {
        Symbol {
            x: row.showsLabel ? 8 : Math.round((parent.width - width) / 2)
            anchors.verticalCenter: parent.verticalCenter
            name: row.symbol
            color: row.isSelected ? Theme.textOnTint : Theme.secondary
        }
        Text {
            visible: row.showsLabel
            anchors.verticalCenter: parent.verticalCenter
            x: 36
            width: parent.width - 44
            text: row.label
            font: Theme.body
            color: row.contentColor
            elide: Text.ElideRight
            textFormat: Text.PlainText
            renderType: Text.NativeRendering
            Accessible.ignored: true
        }
    }

    background: Rectangle {
        radius: Theme.fieldRadius
        color: row.isSelected ? Theme.tintFill : row.down ? Theme.pressed : row.hovered ? Theme.hover : "transparent"
    }
}
