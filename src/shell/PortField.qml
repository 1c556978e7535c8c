import QtQuick
import Brenvale

// The port to listen on, stored when the user is done with the field; what is no number is put back.
TextInputField {
    id: field

    required property SettingsState settings

    // What is typed is not what is stored.
    readonly property bool isEdited: text !== settings.portText

    implicitWidth: 80
    placeholderText: "8765"
    helpText: "Port"
    text: settings.portText
    inputMethodHints: Qt.ImhDigitsOnly
    onEditingFinished: commit()
    Component.onDestruction: commit()

    function commit() {
        if (text !== settings.portText) {
            settings.commitPort(text);
            text = settings.portText;
        }
    }

    Connections {
        target: field.settings

        function onPortChanged() {
            field.text = field.settings.portText;
        }
    }
}
