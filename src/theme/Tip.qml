import QtQuick
import QtQuick.Templates as T
import Brenvale

// What a control does, shown below it when the pointer has rested on it for a while.
T.ToolTip {
    id: tip

    property bool isWanted: true

    visible: isWanted
    delay: 600
    x: parent ? Math.round((parent.width - implicitWidth) / 2) : 0
    y: parent ? parent.height + 4 : 0
    margins: 4
    horizontalPadding: 8
    verticalPadding: 4
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutsideParent

    contentItem: Text {
        text: tip.text
        font: Theme.subheadline
        color: Theme.primary
        textFormat: Text.PlainText
        renderType: Text.NativeRendering
    }
    background: Rectangle {
        radius: Theme.controlRadius
        color: Theme.controlBackground
        border.color: Theme.fieldBorder
    }
}
