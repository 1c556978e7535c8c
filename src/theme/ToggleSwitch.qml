import QtQuick
import QtQuick.Templates as T
import Brenvale

// On or off, at once.
T.Switch {
    id: control

    required property string helpText
    readonly property color trackColor: checked ? Theme.tint : Theme.faded(0.25, 3)

    implicitWidth: 38
    implicitHeight: 22
    padding: 0
    focusPolicy: Qt.StrongFocus
    opacity: enabled ? 1 : 0.4

    Accessible.role: Accessible.CheckBox
    Accessible.name: helpText
    Accessible.checkable: true
    Accessible.checked: checked
    Accessible.onToggleAction: control.press()
    Accessible.onPressAction: control.press()
    Keys.onReturnPressed: control.press()
    Keys.onEnterPressed: control.press()

    function press() {
        toggle();
        toggled();
    }

    indicator: Rectangle {
        width: control.width
        height: control.height
        radius: height / 2
        color: control.trackColor
        border.width: Theme.isHighContrast ? 1 : 0
        border.color: Theme.primary

        Behavior on color {
            ColorAnimation {
                duration: Theme.motionDuration
                easing.type: Theme.motionEasing
            }
        }
        Rectangle {
            x: 2 + control.visualPosition * (parent.width - width - 4)
            anchors.verticalCenter: parent.verticalCenter
            width: parent.height - 4
            height: width
            radius: width / 2
            color: Theme.contrast(Theme.white, control.trackColor) >= 3 ? Theme.white : Theme.black

            Behavior on x {
                NumberAnimation {
                    duration: Theme.motionDuration
                    easing.type: Theme.motionEasing
                }
            }
        }
        FocusRing {
            isShown: control.visualFocus
            radius: parent.radius + Theme.focusRingWidth + 1
        }
    }
}
