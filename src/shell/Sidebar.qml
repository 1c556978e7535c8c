pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Window
import Brenvale

// The tabs from top to bottom. One of them has the tint, or none where the settings name no tab.
Item {
    id: sidebar

    required property SettingsView view
    required property bool showLabels
    signal hideRequested

    implicitWidth: 220

    IconButton {
        id: hideButton

        x: Theme.spacing
        y: Theme.spacing
        symbol: "sidebar-collapse-left"
        helpText: "Hide Sidebar"
        onClicked: sidebar.hideRequested()
    }
    // Eight rows need no list that makes them as they come into sight.
    Column {
        id: list

        readonly property int place: placeOf(sidebar.view.selectedTab)
        readonly property bool hasKeyboard: (Window.activeFocusItem as SidebarRow) !== null

        anchors {
            left: parent.left
            right: parent.right
            top: hideButton.bottom
            margins: Theme.spacing
            topMargin: 4
        }
        spacing: 2

        Accessible.role: Accessible.List
        Accessible.name: "Tabs"

        Keys.onUpPressed: select(place - 1)
        Keys.onDownPressed: select(place + 1)

        function placeOf(tab) {
            for (let place = 0; place < entries.count; ++place) {
                if (sidebar.view.sidebarTabs[place].tab === tab) {
                    return place;
                }
            }
            return -1;
        }

        function select(place) {
            if (place >= 0 && place < entries.count) {
                entries.itemAt(place).forceActiveFocus(Qt.TabFocusReason);
                sidebar.view.selectedTab = sidebar.view.sidebarTabs[place].tab;
            }
        }

        Repeater {
            id: entries

            model: sidebar.view.sidebarTabs

            SidebarRow {
                required property var modelData
                required property int index

                width: list.width
                label: modelData.label
                symbol: modelData.icon
                isSelected: sidebar.view.selectedTab === modelData.tab
                showsLabel: sidebar.showLabels
                activeFocusOnTab: isSelected || (list.place < 0 && index === 0)
                onClicked: sidebar.view.selectedTab = modelData.tab

                // Another way to another tab leads the one who walks here along.
                onIsSelectedChanged: {
                    if (isSelected && list.hasKeyboard) {
                        forceActiveFocus(Qt.TabFocusReason);
                    }
                }
            }
        }
    }
}
