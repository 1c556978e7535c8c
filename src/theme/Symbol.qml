import QtQuick
import Brenvale

// An icon of the desktop's theme by its freedesktop name, in one colour.
Image {
    id: symbol

    property string name
    property color color: Theme.primary
    property real size: 16 // beside text of the ordinary size
    readonly property real drawnSize: Math.round(size * Theme.iconScale)

    // "circle" cuts the icon, if there is one, out of a filled circle, "slash" strikes it through.
    property string decoration

    width: drawnSize
    height: drawnSize
    sourceSize.width: drawnSize
    sourceSize.height: drawnSize
    source: name === "" && decoration === "" ? "" : `image://symbol/${name}/${decoration}/${color}/${Desktop.iconThemeName}`
    Accessible.ignored: true
}
