import QtQuick
import QtQuick.Templates as T
import Brenvale

// What a button does. Escape does not close it: that key is the phone's here.
Loader {
    id: tip

    property string text
    property bool isWanted: false

    active: isWanted && text !== ""
    sourceComponent: Tip {
        parent: tip.parent
        text: tip.text
        isWanted: true
        closePolicy: T.Popup.CloseOnPressOutsideParent
    }
}
