import QtQuick
import QtQuick.Templates as T
import Brenvale

// A page that scrolls what does not fit, as a column that no wide window stretches.
Flickable {
    id: page

    default property alias content: column.data
    property alias spacing: column.spacing
    property int maximumWidth: Theme.formWidth
    property int padding: Theme.padding

    clip: true
    contentWidth: width
    contentHeight: column.implicitHeight + 2 * padding
    boundsBehavior: Flickable.StopAtBounds
    pixelAligned: true
    T.ScrollBar.vertical: ScrollHandle {}
    Keyboard.home: page

    Column {
        id: column

        x: Math.round((page.width - width) / 2)
        y: page.padding
        width: Math.min(page.width - 2 * page.padding, page.maximumWidth)
        spacing: 20
    }
}
