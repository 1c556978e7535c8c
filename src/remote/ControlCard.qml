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
        leftPadding: Theme.cardInset
        text: card.title
        font: Theme.headline
        Accessible.role: Accessible.Heading
    }
    Rectangle {
        width: parent.width
        implicitHeight: place.childrenRect.height + 2 * Theme.cardInset
        radius: Theme.cardRadius
        color: Theme.controlBackground
        border.width: 1
        border.color: Theme.hairline

        Item {
            id: place

            x: Theme.cardInset
            y: Theme.cardInset
            width: parent.width - 2 * Theme.cardInset
        }
    }
}
