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
    ListView {
        id: list

        anchors {
            fill: parent
            margins: Theme.spacing
            topMargin: hideButton.y + hideButton.height + 4
        }
        clip: contentHeight > height
        spacing: 2
        boundsBehavior: Flickable.StopAtBounds
        activeFocusOnTab: true
        model: sidebar.view.sidebarTabs
        currentIndex: placeOf(sidebar.view.selectedTab)
        keyNavigationEnabled: false

        Accessible.role: Accessible.List
        Accessible.name: "Tabs"

        Keys.onUpPressed: select(currentIndex - 1)
        Keys.onDownPressed: select(currentIndex + 1)

        function placeOf(tab) {
            for (let place = 0; place < count; ++place) {
                if (sidebar.view.sidebarTabs[place].tab === tab) {
                    return place;
                }
            }
            return -1;
        }

        function select(index) {
            if (index >= 0 && index < count) {
                sidebar.view.selectedTab = sidebar.view.sidebarTabs[index].tab;
            }
        }

        delegate: SidebarRow {
            required property var modelData

            width: ListView.view.width
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
