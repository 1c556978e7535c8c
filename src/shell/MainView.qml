import QtQuick
import Brenvale

// All of the window: the sidebar, and the tab that is selected in it.
Rectangle {
    id: main

    required property SettingsView view

    // By the number of the tab: its file, and what this needs to know.
    readonly property var tabs: [
        {file: "../shell/SettingsTab.qml", needs: {settings: view.settingsTab}},
        {file: "../notifications/NotificationsTab.qml", needs: {notifications: view.notificationsTab}},
        {file: "../messages/SendSmsTab.qml", needs: {sms: view.sendSmsTab}},
        {file: "../shell/InfoTab.qml", needs: {}},
        {file: "../messages/CallsTab.qml", needs: {calls: view.callsTab}},
        {file: "../transfer/FileDropTab.qml", needs: {fileDrop: view.fileDropTab}},
        {file: "../shell/ClipboardTab.qml", needs: {clipboard: view.clipboardTab}},
        {file: "../remote/RemoteControlTab.qml", needs: {remote: view.remoteControlTab}}
    ]

    color: Theme.windowBackground

    Component.onCompleted: view.appeared()

    Keys.onPressed: event => event.accepted = keyboard.takeUnwanted(event.key, event.modifiers, event.text)

    function selectNeighbour(step) {
        const count = view.sidebarTabs.length;
        let next = 0;
        for (let place = 0; place < count; ++place) {
            if (view.sidebarTabs[place].tab === view.selectedTab) {
                next = (place + step + count) % count;
            }
        }
        view.selectedTab = view.sidebarTabs[next].tab;
    }

    Connections {
        target: Desktop

        function onBecameActive() {
            main.view.becameActive();
        }
    }
    Shortcut {
        sequence: "Ctrl+PgDown"
        onActivated: main.selectNeighbour(1)
    }
    Shortcut {
        sequence: "Ctrl+PgUp"
        onActivated: main.selectNeighbour(-1)
    }
    Shortcut {
        sequence: "F9"
        onActivated: main.view.isSidebarShown = !main.view.isSidebarShown
    }

    Shortcut {
        sequence: "Ctrl+W"
        onActivated: main.Window.window.close()
    }
    Shortcut {
        sequence: "Ctrl+F"
        onActivated: {
            main.view.selectedTab = 2;
            (detail.item as SendSmsTab).search();
        }
    }
    // Dates turn at midnight.
    Timer {
        running: true
        interval: untilMidnight()
        onTriggered: {
            main.view.becameActive();
            interval = untilMidnight();
            restart();
        }

        function untilMidnight(): int {
            const now = new Date();
            return new Date(now).setHours(24, 0, 1, 0) - now;
        }
    }
    Keyboard {
        id: keyboard

        tab: detail.item as Item
    }
    Sidebar {
        id: sidebar

        anchors {
            left: parent.left
            top: parent.top
            bottom: parent.bottom
        }
        width: main.view.isSidebarShown ? implicitWidth : 0
        visible: main.view.isSidebarShown
        view: main.view
        showLabels: main.view.showLabels(main.width)
        onHideRequested: main.view.isSidebarShown = false
    }
    Item {
        id: strip

        anchors {
            left: parent.left
            top: parent.top
            bottom: parent.bottom
        }
        width: showButton.width + 2 * Theme.spacing
        visible: !main.view.isSidebarShown

        IconButton {
            id: showButton

            x: Theme.spacing
            y: Theme.spacing
            symbol: "sidebar-expand-left"
            helpText: "Show Sidebar"
            onClicked: main.view.isSidebarShown = true
        }
    }
    Hairline {
        id: divider

        anchors {
            left: sidebar.visible ? sidebar.right : strip.right
            top: parent.top
            bottom: parent.bottom
        }
    }
    Loader {
        id: detail

        // Never empty, so that the first one is a change too, and the only one.
        readonly property string file: main.tabs[main.view.detailTab].file

        anchors {
            left: divider.right
            right: parent.right
            top: parent.top
            bottom: parent.bottom
        }
        onFileChanged: setSource(file, main.tabs[main.view.detailTab].needs)
    }
}
