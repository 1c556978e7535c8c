import QtQuick
import Brenvale

// A titled card.
Column {
    id: card

    required property string title
    default property alias content: place.data

    width: parent ? parent.width : implicitWidth
    spacing: 15

    Accessible.role: Accessible.Grouping
    Accessible.name: title

    Label {
        text: card.title
        font: Theme.headline
        Accessible.role: Accessible.Heading
    }
    Rectangle {
        width: parent.width
        implicitHeight: place.childrenRect.height + 2 * Theme.padding
        radius: Theme.cardRadius
        color: Theme.controlBackground
        border.width: Theme.isHighContrast ? 1 : 0
        border.color: Theme.primary

        Item {
            id: place

            x: Theme.padding
            y: Theme.padding
            width: parent.width - 2 * Theme.padding
        }
    }
}
