import QtQuick
import QtQuick.Templates as T
import Brenvale

// A round button of a call panel. It is pressed by the pointer or by assistive technology: the panel never has the
// keyboard.
T.AbstractButton {
    id: control

    required property string symbol
    required property color fill
    property color color: Theme.white

    implicitWidth: 32
    implicitHeight: 32
    focusPolicy: Qt.NoFocus

    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.onPressAction: control.clicked()

    contentItem: Item {
        Symbol {
            anchors.centerIn: parent
            name: control.symbol
            size: 16
            color: control.color
        }
    }
    background: Rectangle {
        radius: width / 2
        color: control.fill
        border.width: Theme.isHighContrast ? 1 : 0
        border.color: Theme.primary

        Rectangle {
            anchors.fill: parent
            radius: parent.radius
            color: control.down ? Theme.withOpacity(Theme.black, 0.2)
                 : control.hovered ? Theme.withOpacity(Theme.black, 0.1) : "transparent"
        }
    }
}
