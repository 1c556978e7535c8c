import QtQuick
import Brenvale

// The search field, which takes a number to write to as well.
Rectangle {
    id: search

    required property SendSmsState sms

    readonly property alias field: field

    Keyboard.home: field
    implicitHeight: field.implicitHeight + 12 - 8
    radius: 8
    color: Theme.controlBackground
    border.width: Theme.isHighContrast && !field.activeFocus ? 1 : 0
    border.color: Theme.primary

    Symbol {
        id: glass

        x: 6
        anchors.verticalCenter: parent.verticalCenter
        name: "edit-find"
        color: Theme.secondary
    }
    TextInputField {
        id: field

        anchors {
            left: glass.right
            leftMargin: Theme.spacing
            right: clearButton.visible ? clearButton.left : parent.right
            rightMargin: 6
            verticalCenter: parent.verticalCenter
        }
        hasFrame: false
        placeholderText: "To: Search or type number…"
        text: search.sms.contactQuery
        onTextEdited: search.sms.contactQuery = text
        Keys.onEscapePressed: search.sms.contactQuery = ""
    }
    IconButton {
        id: clearButton

        anchors {
            right: parent.right
            rightMargin: 4
            verticalCenter: parent.verticalCenter
        }
        visible: search.sms.contactQuery !== ""
        size: 24
        symbol: "edit-clear"
        helpText: "Clear search"
        onClicked: search.sms.contactQuery = ""
    }
    FocusRing {
        anchors.margins: -Theme.focusRingWidth
        radius: parent.radius + Theme.focusRingWidth
        isShown: field.activeFocus
    }
}
