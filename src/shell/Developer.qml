pragma Singleton

import QtQuick

// Who makes Brenvale, as its window tells.
QtObject {
    readonly property string name: "The Brenvale developers"
    readonly property string profileAddress: "https://brenvale.example/developers"
    readonly property string accountNumber: "PL-0000-0000-0000"
}
