import QtQuick
import Brenvale

// The port to listen on, stored when the user is done with the field; what is no number is put back.
TextInputField {
    id: field

    required property SettingsView view

    // What is typed is not what is stored.
    readonly property bool isEdited: text !== view.portText

    implicitWidth: 80
    placeholderText: "8765"
    helpText: "Port"
    text: view.portText
    inputMethodHints: Qt.ImhDigitsOnly
    onEditingFinished: commit()
    Component.onDestruction: commit()

    function commit() {
        if (text !== view.portText) {
            view.commitPort(text);
            text = view.portText;
        }
    }

    Connections {
        target: field.view

        function onPortChanged() {
            field.text = field.view.portText;
        }
    }
}
