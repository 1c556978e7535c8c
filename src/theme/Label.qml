import QtQuick
import Brenvale

// Text that assistive technology reads.
Text {
    font: Theme.body
    color: Theme.primary
    linkColor: Theme.tintText
    textFormat: Text.PlainText
    renderType: Text.NativeRendering

    Accessible.role: Accessible.StaticText
    Accessible.name: text
    Accessible.ignored: text === ""
}
