pragma ComponentBehavior: Bound

import QtQuick
import Brenvale

// What the phone forwarded, the newest on top.
Rectangle {
    id: tab

    required property NotificationsState notifications
    readonly property bool isEmpty: notifications.items.count === 0

    color: Theme.controlBackground

    Keyboard.home: list.visible ? list : tab

    EmptyState {
        anchors.fill: parent
        visible: tab.isEmpty
        symbol: "notifications"
        decoration: "slash"
        title: "No notifications yet"
        titleFont: Theme.title2Bold
        titleColor: Theme.primary
        description: "Notifications forwarded from your Android phone will appear here."
    }
    ScrollList {
        id: list

        anchors {
            fill: parent
            bottomMargin: footer.height
        }
        visible: !tab.isEmpty
        topMargin: Theme.spacing
        bottomMargin: Theme.spacing
        helpText: "Notifications"
        model: tab.notifications.items
        delegate: NotificationRow {
            notifications: tab.notifications
        }
    }
    Rectangle {
        id: footer

        anchors {
            left: parent.left
            right: parent.right
            bottom: parent.bottom
        }
        height: clearButton.height + 2 * 8
        color: Theme.windowBackground
        visible: !tab.isEmpty

        Hairline {
            width: parent.width
        }
        Label {
            x: 12
            anchors.verticalCenter: parent.verticalCenter
            text: tab.notifications.notificationCountText
            font: Theme.caption
            color: Theme.secondary
        }
        PlainButton {
            id: clearButton

            anchors {
                right: parent.right
                rightMargin: 12 - horizontalPadding
                verticalCenter: parent.verticalCenter
            }
            text: "Clear All"
            font: Theme.caption
            color: Theme.readable(Theme.red)
            enabled: !tab.isEmpty
            onClicked: tab.notifications.clearNotifications()
        }
    }
}
