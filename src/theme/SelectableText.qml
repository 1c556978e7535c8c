import QtQuick
import Brenvale

// Text that can be marked and copied, by keyboard too.
TextEdit {
    id: control

    readonly property bool visualFocus: activeFocus && focusReason !== Qt.MouseFocusReason
    property int focusReason: Qt.OtherFocusReason

    font: Theme.body
    color: Theme.primary
    selectionColor: Theme.tintFill
    selectedTextColor: Theme.textOnTint
    textFormat: TextEdit.PlainText
    renderType: Text.NativeRendering
    wrapMode: TextEdit.Wrap
    readOnly: true
    selectByMouse: true
    selectByKeyboard: true
    activeFocusOnTab: true
    onActiveFocusChanged: {
        if (!activeFocus) {
            deselect();
            focusReason = Qt.OtherFocusReason;
        }
    }

    Accessible.role: Accessible.EditableText
    Accessible.readOnly: true
    Accessible.name: text

    // Sees the press before the text takes the keyboard for it.
    PointHandler {
        onActiveChanged: if (active) control.focusReason = Qt.MouseFocusReason
    }
    HoverHandler {
        cursorShape: Qt.IBeamCursor
    }

    FocusRing {
        isShown: control.visualFocus
    }
}
