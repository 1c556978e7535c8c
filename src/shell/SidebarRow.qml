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
    implicitHeight: Math.max(32, Theme.controlHeight + 4)
    focusPolicy: Qt.ClickFocus

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
            color: row.isSelected ? Theme.tintText : Theme.secondary
        }
        Text {
            visible: row.showsLabel
            anchors.verticalCenter: parent.verticalCenter
            x: 20 + Math.round(16 * Theme.iconScale)
            width: parent.width - x - 8
            text: row.label
            font: Theme.body
            color: Theme.primary
            elide: Text.ElideRight
            textFormat: Text.PlainText
            renderType: Text.NativeRendering
            Accessible.ignored: true
        }
    }

    background: Rectangle {
        radius: Theme.fieldRadius
        color: row.isSelected ? Theme.selection : row.down ? Theme.pressed : row.hovered ? Theme.hover : "transparent"

        border.width: row.isSelected && Theme.isHighContrast ? 1 : 0
        border.color: Theme.primary

        FocusRing {
            radius: Theme.fieldRadius + Theme.focusRingWidth + 1
            isShown: row.visualFocus
        }
    }
}
