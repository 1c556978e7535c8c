pragma ComponentBehavior: Bound

import QtQuick
import Brenvale

// The messages of the open thread. It opens at the newest and follows new ones; otherwise it keeps its
// place.
ScrollList {
    id: list

    required property SendSmsState sms
    property var placeBefore: ({})
    property bool isResetting: false
    property bool isAtEnd: true
    readonly property bool isFollowing: followAnimation.running

    helpText: "Messages"
    model: sms.activeMessages
    reuseItems: true
    spacing: 10
    cacheBuffer: 300
    activeFocusOnTab: count > 0
    topMargin: 12
    bottomMargin: 12

    Component.onCompleted: goToEnd()
    onContentYChanged: if (!isResetting) isAtEnd = contentY + height >= originY + contentHeight + bottomMargin - 2
    onHeightChanged: keepEnd()
    onContentHeightChanged: if (isAtEnd) Qt.callLater(keepEnd) // qmllint disable
    // A text that is pointed at has the keyboard for itself.
    onActiveFocusChanged: if (activeFocus && currentIndex < 0 && Window.activeFocusItem === list) currentIndex = count - 1
    onMovementStarted: followAnimation.stop()
    Keys.onPressed: event => {
        if (event.matches(StandardKey.Copy) && currentItem) {
            sms.copyMessage((currentItem as MessageBubble).body);
            event.accepted = true;
        }
    }

    // What shows at the end stays there when the room or the layout changes.
    function keepEnd() {
        if (isAtEnd && !isFollowing && !isResetting) {
            goToEnd();
        }
    }

    function goToEnd() {
        positionViewAtEnd();
        contentY = Math.max(originY - topMargin, originY + contentHeight + bottomMargin - height);
    }

    // Who unfolds a message reads on at its beginning, also at the end of the list.
    function showAllOf(index) {
        isAtEnd = false;
        model.showAll(index);
    }

    // Where the view is, in a way that outlives the rows.
    function place() {
        const top = Math.max(indexAt(width / 2, contentY), indexAt(width / 2, contentY + spacing));
        return {count: count, isAtEnd: isAtEnd, top: top, offset: top < 0 ? 0 : contentY - itemAtIndex(top).y};
    }

    // Another thread: with as many messages the view stays where it is, otherwise it goes to the end.
    function takeUpReset() {
        isResetting = false;
        if (count === placeBefore.count) {
            restore(placeBefore);
        } else {
            follow();
        }
    }

    function restore(place) {
        forceLayout();
        if (place.isAtEnd) {
            goToEnd();
        } else if (place.top >= 0) {
            positionViewAtIndex(place.top, ListView.Beginning);
            contentY += place.offset;
        }
    }

    // Glides to the newest message, over a page at most: what lies between is not laid out.
    function follow() {
        followAnimation.stop();
        const start = contentY;
        goToEnd();
        const end = contentY;
        if (Theme.motionDuration > 0 && start < end) {
            contentY = Math.max(start, end - height);
            followAnimation.to = end;
            followAnimation.start();
        }
    }

    NumberAnimation {
        id: followAnimation

        target: list
        property: "contentY"
        duration: Theme.motionDuration
        easing.type: Theme.motionEasing
        onFinished: list.goToEnd()
    }
    Connections {
        target: list.model

        function onCountChanged() {
            if (!list.isResetting) {
                list.follow();
            }
        }
        function onModelAboutToBeReset() {
            followAnimation.stop();
            list.placeBefore = list.place();
        }
        function onModelReset() {
            // The list takes up the new rows in a later step of the event loop.
            list.isResetting = true;
            list.currentIndex = -1;
            Qt.callLater(() => Qt.callLater(list.takeUpReset)); // qmllint disable
        }
    }
    Label {
        y: 12
        width: parent.width
        topPadding: 16
        bottomPadding: 16
        visible: list.count === 0
        text: "New Conversation"
        font: Theme.caption
        color: Theme.secondary
        horizontalAlignment: Text.AlignHCenter
    }

    delegate: MessageBubble {
        width: ListView.view.width
        isCurrent: list.activeFocus && ListView.isCurrentItem
        onAllWanted: list.showAllOf(index)
        ListView.onPooled: visible = false // a row in reserve is not to be read out
        ListView.onReused: visible = true
    }
}
