import QtQuick
import QtQuick.Layouts
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

    // The pointer has the background since `dragStarted`, and is so far from where that was.
    signal dragStarted()
    signal dragMoved(real dx, real dy)

    implicitWidth: 350
    implicitHeight: 80

    Accessible.role: Accessible.Alert
    Accessible.name: [panel.thirdLine, panel.firstLine, panel.secondLine].filter(line => line !== "").join(", ")

    Rectangle {
        anchors.fill: parent
        radius: panel.isTranslucent ? Theme.cardRadius : 0
        color: panel.isTranslucent && !Theme.isHighContrast ? Theme.withOpacity(Theme.windowBackground, 0.94)
                                                            : Theme.windowBackground
        border.width: 1
        border.color: Theme.isHighContrast ? Theme.primary : Theme.fieldBorder
    }

    MouseArea {
        id: background

        property point start

        anchors.fill: parent
        onPressed: mouse => {
            start = mapToGlobal(mouse.x, mouse.y);
            panel.dragStarted();
        }
        onPositionChanged: mouse => {
            const now = mapToGlobal(mouse.x, mouse.y);
            panel.dragMoved(now.x - start.x, now.y - start.y);
        }
    }

    RowLayout {
        anchors.fill: parent
        anchors.leftMargin: Theme.padding
        anchors.rightMargin: Theme.padding
        spacing: 15

        Rectangle {
            implicitWidth: 45
            implicitHeight: 45
            radius: width / 2
            color: Theme.withOpacity(panel.iconColor, 0.2)

            Symbol {
                anchors.centerIn: parent
                name: "call-start"
                size: 22
                color: panel.iconColor
            }
        }

        ColumnLayout {
            Layout.fillWidth: true
            spacing: 2

            Label {
                Layout.fillWidth: true
                text: panel.firstLine.replace(/\s+/g, " ")
                font: Theme.sized(14, Font.Bold)
                elide: Text.ElideRight
                maximumLineCount: 1
            }
            Label {
                Layout.fillWidth: true
                visible: text !== ""
                text: panel.secondLine.replace(/\s+/g, " ")
                font: Theme.sized(11)
                color: Theme.secondary
                elide: Text.ElideRight
                maximumLineCount: 1
            }
            Label {
                Layout.fillWidth: true
                text: panel.thirdLine
                font: Theme.sized(10)
                color: Theme.tertiary
                elide: Text.ElideRight
                maximumLineCount: 1
            }
        }

        Row {
            id: buttonRow

            spacing: 12
        }
    }
}
