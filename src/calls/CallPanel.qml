import QtQuick
import Brenvale

// What the two call panels share: a card with an icon in a circle, up to three lines, and buttons at the right.
// It has no keyboard; the user drags it by its background.
Item {
    id: panel

    required property color iconColor
    required property string firstLine
    required property string secondLine
    required property string thirdLine
    default property alias buttons: buttonRow.data

    // Without a compositor nothing shows through, and corners can't be round.
    property bool isTranslucent: true

    // The pointer has the background and moves the panel.
    readonly property bool isHeld: background.pressed

    implicitWidth: 350
    implicitHeight: 80

    Accessible.role: Accessible.AlertMessage
    Accessible.name: joined(joined(panel.thirdLine, panel.firstLine), panel.secondLine)

    function joined(text: string, line: string): string {
        return text === "" || line === "" ? text + line : text + ", " + line;
    }

    // The panel's height is fixed: beyond one and a half times the ordinary size its lines would leave it.
    function sized(pixelSize: real, weight: int): font {
        return Theme.sized(pixelSize * Math.min(1, 1.5 / Theme.textScale), weight);
    }

    Rectangle {
        anchors.fill: parent
        radius: panel.isTranslucent ? Theme.cardRadius : 0
        color: panel.isTranslucent && !Theme.isHighContrast ? Theme.withOpacity(Theme.windowBackground, 0.94)
                                                            : Theme.windowBackground
        border.width: 1
        border.color: Theme.fieldBorder
    }

    MouseArea {
        id: background

        anchors.fill: parent
    }

    Rectangle {
        id: circle

        anchors.left: parent.left
        anchors.leftMargin: Theme.padding
        anchors.verticalCenter: parent.verticalCenter
        width: 45
        height: 45
        radius: width / 2
        color: Theme.withOpacity(panel.iconColor, 0.2)

        Symbol {
            anchors.centerIn: parent
            name: "call-start"
            size: 22
            color: panel.iconColor
        }
    }

    Column {
        anchors.left: circle.right
        anchors.right: buttonRow.left
        anchors.margins: 15
        anchors.verticalCenter: parent.verticalCenter
        spacing: 2

        Label {
            width: parent.width
            text: panel.firstLine.replace(/\s+/g, " ")
            font: panel.sized(14, Font.Bold)
            fontSizeMode: Text.HorizontalFit // whose number it is counts for more than its size
            minimumPixelSize: 14
            elide: Text.ElideRight
            maximumLineCount: 1
        }
        Label {
            width: parent.width
            visible: text !== ""
            text: panel.secondLine.replace(/\s+/g, " ")
            font: panel.sized(11, Font.Normal)
            color: Theme.secondary
            elide: Text.ElideRight
            maximumLineCount: 1
        }
        Label {
            width: parent.width
            text: panel.thirdLine
            font: panel.sized(10, Font.Normal)
            color: Theme.tertiary
            elide: Text.ElideRight
            maximumLineCount: 1
        }
    }

    Row {
        id: buttonRow

        anchors.right: parent.right
        anchors.rightMargin: Theme.padding
        anchors.verticalCenter: parent.verticalCenter
        spacing: 12
    }
}
