import QtQuick
import Brenvale

// A line of a row that says all of it to assistive technology itself.
Text {
    color: Theme.secondary
    elide: Text.ElideRight
    horizontalAlignment: Text.AlignLeft
    maximumLineCount: 1
    textFormat: Text.PlainText
    renderType: Text.NativeRendering
    Accessible.ignored: true
}
