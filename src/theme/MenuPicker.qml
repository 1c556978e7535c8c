pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Brenvale

// One of several texts, chosen from a menu. `selectedIndex` is what somebody else says is chosen; `picked` tells
// of the user's choice.
T.ComboBox {
    id: control

    required property string helpText
    required property int selectedIndex
    property string controlSize: "regular"
    signal picked(int index)

    implicitWidth: 160
    implicitHeight: controlSize === "small" ? Theme.smallControlHeight : Theme.controlHeight
    leftPadding: 8
    rightPadding: 20
    font: controlSize === "small" ? Theme.subheadline : Theme.body
    focusPolicy: Qt.StrongFocus
    opacity: enabled ? 1 : 0.4
    currentIndex: selectedIndex

    // A new model chooses its first row by itself.
    onModelChanged: currentIndex = Qt.binding(() => control.selectedIndex)
    onActivated: index => control.picked(index)

    Accessible.role: Accessible.ComboBox
    Accessible.name: helpText
    Accessible.description: displayText
    Accessible.onPressAction: control.popup.open()
    Keys.onReturnPressed: control.popup.open()
    Keys.onEnterPressed: control.popup.open()

    contentItem: Text {
        text: Theme.oneLine(control.displayText)
        font: control.font
        color: Theme.primary
        elide: Text.ElideRight
        verticalAlignment: Text.AlignVCenter
        textFormat: Text.PlainText
        renderType: Text.NativeRendering
        Accessible.ignored: true
    }
    indicator: Symbol {
        x: control.width - width - 6
        y: Math.round((control.height - height) / 2)
        name: "go-down"
        color: Theme.secondary
        size: 12
    }
    background: Rectangle {
        radius: Theme.controlRadius
        color: Theme.controlBackground
        border.width: 1
        border.color: Theme.fieldBorder

        Rectangle {
            anchors.fill: parent
            radius: parent.radius
            color: control.down ? Theme.pressed : control.hovered ? Theme.hover : "transparent"
        }
        FocusRing {
            isShown: control.visualFocus
        }
    }

    delegate: T.ItemDelegate {
        id: entry

        required property string modelData
        required property int index

        width: ListView.view.width
        implicitHeight: Theme.controlHeight
        leftPadding: 8
        rightPadding: 8
        highlighted: control.highlightedIndex === index

        Accessible.role: Accessible.ListItem
        Accessible.name: modelData
        Accessible.onPressAction: {
            control.picked(index);
            control.popup.close();
        }

        contentItem: Text {
            text: Theme.oneLine(entry.modelData)
            font: control.font
            color: Theme.primary
            elide: Text.ElideRight
            verticalAlignment: Text.AlignVCenter
            textFormat: Text.PlainText
            renderType: Text.NativeRendering
            Accessible.ignored: true
        }
        background: Rectangle {
            radius: Theme.controlRadius - 2
            color: entry.highlighted ? Theme.selection : "transparent"
        }
    }
    popup: T.Popup {
        y: control.height + 4
        width: control.width
        implicitHeight: Math.min(contentItem.implicitHeight, 240) + topPadding + bottomPadding
        padding: 4
        margins: 4

        contentItem: ListView {
            clip: true
            implicitHeight: contentHeight
            model: control.delegateModel
            currentIndex: control.highlightedIndex
            boundsBehavior: Flickable.StopAtBounds
            T.ScrollBar.vertical: ScrollHandle {}
        }
        background: Rectangle {
            radius: Theme.controlRadius
            color: Theme.controlBackground
            border.color: Theme.fieldBorder
        }
    }
}
