import QtQuick
import Brenvale

// Controls under a small title.
Column {
    id: group

    required property string title
    property bool isCentred: false
    property int titleGap: 0

    Accessible.role: Accessible.Grouping
    Accessible.name: title

    Label {
        width: group.isCentred ? parent.width : implicitWidth
        bottomPadding: group.titleGap
        text: group.title
        font: Theme.caption
        color: Theme.secondary
        horizontalAlignment: group.isCentred ? Text.AlignHCenter : Text.AlignLeft
    }
}
