pragma ComponentBehavior: Bound

import QtQuick
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
    // Where no entry is selected, the ring is around all of them.
    FocusRing {
        anchors.fill: list
        radius: Theme.fieldRadius + Theme.focusRingWidth + 1
        isShown: list.activeFocus && list.place < 0
    }
    // Eight rows need no list that makes them as they come into sight.
    Column {
        id: list

        readonly property int place: placeOf(sidebar.view.selectedTab)

        anchors {
            left: parent.left
            right: parent.right
            top: hideButton.bottom
            margins: Theme.spacing
            topMargin: 4
        }
        spacing: 2
        activeFocusOnTab: true

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
                sidebar.view.selectedTab = sidebar.view.sidebarTabs[place].tab;
            }
        }

        Repeater {
            id: entries

            model: sidebar.view.sidebarTabs

            SidebarRow {
                required property var modelData

                width: list.width
                label: modelData.label
                symbol: modelData.icon
                isSelected: sidebar.view.selectedTab === modelData.tab
                showsLabel: sidebar.showLabels
                onClicked: sidebar.view.selectedTab = modelData.tab

                FocusRing {
                    radius: Theme.fieldRadius + Theme.focusRingWidth + 1
                    isShown: list.activeFocus && parent.isSelected
                }
            }
        }
    }
}
