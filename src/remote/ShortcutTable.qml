pragma ComponentBehavior: Bound

import QtQuick
import Brenvale

// The keys and what they do, for reading only.
Grid {
    id: table

    required property var rows

    columns: 2
    columnSpacing: 20
    rowSpacing: 6

    Repeater {
        model: 2 * table.rows.length

        delegate: Label {
            required property int index
            readonly property bool isKey: index % 2 === 0
            readonly property var row: table.rows[Math.floor(index / 2)]

            text: isKey ? row.key : row.description
            font: Theme.monospaced(Theme.caption, isKey ? Font.Bold : Font.Normal)
            color: isKey ? Theme.primary : Theme.secondary
        }
    }
}
