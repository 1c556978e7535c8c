import QtQuick
import Brenvale

// A key of the phone with its icon and its name.
PadButton {
    id: button

    implicitWidth: Math.max(130, implicitContentWidth + leftPadding + rightPadding)

    contentItem: Row {
        spacing: button.spacing

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            name: button.modelData.icon
        }
        Text {
            anchors.verticalCenter: parent.verticalCenter
            text: button.modelData.title
            font: button.font
            color: Theme.primary
            textFormat: Text.PlainText
            renderType: Text.NativeRendering
            Accessible.ignored: true
        }
    }
}
