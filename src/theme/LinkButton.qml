import QtQuick
import Brenvale

// Opens a page in the browser. No button: the toolkit tells assistive technology that all of those are buttons.
Item {
    id: link

    required property url target
    property string text

    implicitWidth: label.implicitWidth
    implicitHeight: label.implicitHeight + 2 * 2
    activeFocusOnTab: true

    Accessible.role: Accessible.Link
    Accessible.name: text
    Accessible.onPressAction: link.open()
    Keys.onReturnPressed: open()
    Keys.onEnterPressed: open()
    Keys.onSpacePressed: open()

    function open() {
        Qt.openUrlExternally(target);
    }

    Text {
        id: label

        anchors.verticalCenter: parent.verticalCenter
        text: link.text
        font.family: Theme.subheadline.family
        font.pixelSize: Theme.subheadline.pixelSize
        font.underline: pointer.hovered
        color: Theme.tintText
        textFormat: Text.PlainText
        renderType: Text.NativeRendering
        Accessible.ignored: true
    }
    TapHandler {
        onTapped: link.open()
    }
    HoverHandler {
        id: pointer

        cursorShape: Qt.PointingHandCursor
    }
    FocusRing {
        isShown: link.activeFocus
    }
}
