import QtQuick
import Brenvale

// A group of a form: a header above, its rows on a card with hairlines between them, a footer below.
Column {
    id: section

    property string header
    property string footer
    default property alias rows: rowColumn.data

    width: parent ? parent.width : implicitWidth
    spacing: Theme.spacing

    Accessible.role: Accessible.Grouping
    Accessible.name: header

    Label {
        visible: text !== ""
        leftPadding: Theme.cardInset
        width: parent.width
        text: section.header
        font: Theme.headline
        elide: Text.ElideRight
        Accessible.role: Accessible.Heading
    }
    Rectangle {
        width: parent.width
        height: rowColumn.height
        visible: height > 0
        radius: Theme.cardRadius
        color: Theme.controlBackground
        border.width: 1
        border.color: Theme.hairline

        Column {
            id: rowColumn

            width: parent.width
        }
    }
    Label {
        visible: text !== ""
        leftPadding: Theme.cardInset
        rightPadding: Theme.cardInset
        width: parent.width
        text: section.footer
        font: Theme.caption
        color: Theme.secondary
        wrapMode: Text.Wrap
    }
}
