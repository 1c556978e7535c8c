pragma ComponentBehavior: Bound

import QtQuick
import Brenvale

// One of a few short texts, side by side. `selectedIndex` is what somebody else says is chosen; `picked` tells of
// the user's choice. The arrow keys choose.
Rectangle {
    id: control

    required property string helpText
    required property var labels
    required property int selectedIndex
    signal picked(int index)

    implicitWidth: 30 * labels.length
    implicitHeight: Theme.smallControlHeight
    radius: Theme.controlRadius
    color: Theme.withOpacity(Theme.primary, 0.08)
    border.width: Theme.isHighContrast ? 1 : 0
    border.color: Theme.primary
    activeFocusOnTab: true

    Accessible.role: Accessible.Grouping
    Accessible.name: helpText
    Keys.onLeftPressed: pick(selectedIndex - 1)
    Keys.onRightPressed: pick(selectedIndex + 1)

    function pick(index) {
        if (index >= 0 && index < labels.length) {
            picked(index);
        }
    }

    Repeater {
        model: control.labels

        delegate: Rectangle {
            id: segment

            required property string modelData
            required property int index
            readonly property bool isSelected: control.selectedIndex === index

            x: index * width
            width: control.width / control.labels.length
            height: control.height
            radius: Theme.controlRadius
            color: isSelected ? Theme.tintFill : pointer.pressed ? Theme.pressed
                 : pointer.containsMouse ? Theme.hover : "transparent"

            Accessible.role: Accessible.RadioButton
            Accessible.name: `${control.helpText} ${modelData}`
            Accessible.checkable: true
            Accessible.checked: isSelected
            Accessible.onPressAction: control.pick(segment.index)
            Accessible.onToggleAction: control.pick(segment.index)

            Text {
                anchors.centerIn: parent
                text: segment.modelData
                font: Theme.subheadline
                color: segment.isSelected ? Theme.textOnTint : Theme.primary
                textFormat: Text.PlainText
                renderType: Text.NativeRendering
                Accessible.ignored: true
            }
            MouseArea {
                id: pointer

                anchors.fill: parent
                hoverEnabled: true
                onClicked: control.pick(segment.index)
            }
        }
    }
    FocusRing {
        isShown: control.activeFocus
    }
}
