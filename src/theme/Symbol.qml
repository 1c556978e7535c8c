import QtQuick
import Brenvale

// An icon of the desktop's theme by its freedesktop name, in one colour.
Image {
    id: symbol

    property string name
    property color color: Theme.primary
    property real size: 16

    // "circle" cuts the icon, if there is one, out of a filled circle, "slash" strikes it through.
    property string decoration

    width: size
    height: size
    sourceSize.width: size
    sourceSize.height: size
    source: name === "" && decoration === "" ? "" : `image://symbol/${name}/${decoration}/${color}/${Desktop.iconThemeName}`
    Accessible.ignored: true
}
