import QtQuick
import Brenvale

// A round button of a call panel. It is pressed by the pointer or by assistive technology: the panel never has the
// keyboard. Not one of the templates of the window's buttons: loading these would hold up the first call.
Item {
    id: control

    required property string text
    required property string symbol
    required property color fill
    property color color: Theme.white
    property string helpText

    signal clicked

    implicitWidth: 32
    implicitHeight: 32

    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.onPressAction: control.clicked()

    Rectangle {
        anchors.fill: parent
        radius: width / 2
        color: control.fill
        border.width: Theme.isHighContrast ? 1 : 0
        border.color: Theme.primary

        Rectangle {
            anchors.fill: parent
            radius: parent.radius
            color: pointer.pressed && pointer.containsMouse ? Theme.withOpacity(Theme.black, 0.2)
                 : pointer.containsMouse ? Theme.withOpacity(Theme.black, 0.1) : "transparent"
        }
    }
    Symbol {
        anchors.centerIn: parent
        name: control.symbol
        size: 16
        color: control.color
    }
    MouseArea {
        id: pointer

        anchors.fill: parent
        hoverEnabled: true
        onClicked: control.clicked()
    }

    // The panel has no room for a tip of its own: it stands between the button and the edge.
    Text {
        anchors.top: parent.bottom
        anchors.topMargin: 2
        anchors.horizontalCenter: parent.horizontalCenter
        visible: control.helpText !== "" && rest.hasRested
        text: control.helpText
        font: Theme.sized(10 * Math.min(1, 1.5 / Theme.textScale))
        color: Theme.primary
        renderType: Text.NativeRendering
    }
    Timer {
        id: rest

        property bool hasRested: false

        interval: 600
        running: pointer.containsMouse
        onTriggered: hasRested = true
        onRunningChanged: {
            if (!pointer.containsMouse) {
                hasRested = false;
            }
        }
    }
}
