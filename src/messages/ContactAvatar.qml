import QtQuick
import Brenvale

// The initials of somebody on a circle that goes from blue to purple, from the top left to the bottom right.
Item {
    id: avatar

    required property string initials

    implicitWidth: 36
    implicitHeight: 36

    // A picture, as a shape that is turned has no smooth edge; all who share the colours share it.
    Image {
        anchors.fill: parent
        sourceSize.width: avatar.width
        sourceSize.height: avatar.height
        source: `image://symbol/gradient/${avatar.shade(Theme.blueFill)}/${avatar.shade(Theme.purple)}`
        Accessible.ignored: true
    }
    Text {
        anchors.centerIn: parent
        text: avatar.initials
        font: Theme.fitted(13, 15, Font.Bold)
        color: Theme.white
        textFormat: Text.PlainText
        renderType: Text.NativeRendering
        Accessible.ignored: true
    }

    // 60 % of the colour, or as much more as white takes to be read on it.
    function shade(full) {
        let share = 0.6;
        while (share < 1 && Theme.contrast(Theme.white, Theme.mixed(Theme.windowBackground, full, share)) < 4.5) {
            share += 0.05;
        }
        return Theme.strengthened(Theme.mixed(Theme.windowBackground, full, Math.min(share, 1)), Theme.white);
    }
}
