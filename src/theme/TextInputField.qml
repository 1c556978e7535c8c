import QtQuick
import QtQuick.Templates as T
import Brenvale

// One line of text to type into. `controlSize` is "small", "regular" or "large"; without a frame it stands in
// one of somebody else's.
T.TextField {
    id: control

    property string controlSize: "regular"
    property bool hasFrame: true
    property string helpText: placeholderText

    implicitWidth: 160
    implicitHeight: controlSize === "large" ? Theme.largeControlHeight
                  : controlSize === "small" ? Theme.smallControlHeight : Theme.controlHeight
    leftPadding: hasFrame ? 8 : 0
    rightPadding: hasFrame ? 8 : 0
    verticalAlignment: TextInput.AlignVCenter
    font: controlSize === "small" ? Theme.subheadline : Theme.body
    color: Theme.primary
    placeholderTextColor: Theme.tertiary
    selectionColor: Theme.tintFill
    selectedTextColor: Theme.textOnTint
    renderType: Text.NativeRendering
    selectByMouse: true
    activeFocusOnTab: true
    opacity: enabled ? 1 : 0.4

    Accessible.role: Accessible.EditableText
    Accessible.name: helpText

    Text {
        anchors.fill: parent
        anchors.leftMargin: control.leftPadding
        anchors.rightMargin: control.rightPadding
        visible: control.length === 0 && control.preeditText === ""
        text: control.placeholderText
        font: control.font
        color: control.placeholderTextColor
        elide: Text.ElideRight
        verticalAlignment: control.verticalAlignment
        horizontalAlignment: control.effectiveHorizontalAlignment
        textFormat: Text.PlainText
        renderType: Text.NativeRendering
        Accessible.ignored: true
    }

    background: Rectangle {
        visible: control.hasFrame
        radius: Theme.controlRadius
        color: Theme.controlBackground
        border.width: control.activeFocus ? 0 : 1 // the ring is its outline then
        border.color: Theme.fieldBorder

        FocusRing {
            anchors.margins: -Theme.focusRingWidth
            radius: parent.radius + Theme.focusRingWidth
            isShown: control.activeFocus
        }
    }
}
