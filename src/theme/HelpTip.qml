import QtQuick
import QtQuick.Templates as T

// The tip of the control that it stands in, made only when it is wanted.
Loader {
    id: tip

    property string text
    property bool isWanted: false
    property int closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutsideParent

    onIsWantedChanged: {
        if (isWanted && text !== "") {
            setSource("Tip.qml", {parent: parent, text: text, closePolicy: closePolicy});
        } else {
            source = "";
        }
    }
}
