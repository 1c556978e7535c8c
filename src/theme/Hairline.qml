import QtQuick
import QtQuick.Window
import Brenvale

// One device pixel that divides two areas; stands upright where `isVertical`.
Rectangle {
    property bool isVertical: false

    implicitWidth: 1 / Screen.devicePixelRatio
    implicitHeight: 1 / Screen.devicePixelRatio
    color: Theme.hairline
}
