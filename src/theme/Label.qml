import QtQuick
import Brenvale

// Text that assistive technology reads.
Text {
    font: Theme.body
    color: Theme.primary
    linkColor: Theme.tintText
    horizontalAlignment: Text.AlignLeft // one edge for columns, whatever the script
    textFormat: Text.PlainText
    renderType: Text.NativeRendering

    Accessible.role: Accessible.StaticText
    Accessible.name: text
    Accessible.ignored: text === ""
}
