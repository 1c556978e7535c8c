import QtQuick
import Brenvale

// A line of a row that says all of it to assistive technology itself.
Text {
    height: Desktop.lineHeight(font) // whatever script it is in
    color: Theme.secondary
    elide: Text.ElideRight
    horizontalAlignment: Text.AlignLeft
    verticalAlignment: Text.AlignVCenter
    maximumLineCount: 1
    textFormat: Text.PlainText
    renderType: Text.NativeRendering
    Accessible.ignored: true
}
