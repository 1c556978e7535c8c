import QtQuick
import Brenvale

// A letter, or an icon where one is named, that stands for somebody or something.
Rectangle {
    id: avatar

    property string letter
    property string symbol
    property color tintColor: Theme.tint
    property real size: 32
    property font letterFont: Theme.sized(14, Font.DemiBold)

    implicitWidth: size
    implicitHeight: size
    radius: size / 2
    color: Theme.withOpacity(tintColor, 0.12)
    border.width: Theme.isHighContrast ? 1 : 0
    border.color: Theme.primary

    Text {
        anchors.centerIn: parent
        visible: avatar.symbol === ""
        text: avatar.letter
        font: avatar.letterFont
        color: Theme.readable(avatar.tintColor)
        textFormat: Text.PlainText
        renderType: Text.NativeRendering
        Accessible.ignored: true
    }
    Symbol {
        anchors.centerIn: parent
        visible: avatar.symbol !== ""
        name: avatar.symbol
        size: Math.round(avatar.size / 2)
        color: Theme.readable(avatar.tintColor)
    }
}
