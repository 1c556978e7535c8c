import QtQuick
import Brenvale

// The messages of the open thread. It opens at the newest and follows new ones; one that is wide or long enough to
// scroll keeps its place otherwise.
ScrollList {
    id: list

    required property SettingsView view
    property real placeBefore: 0
    property int countBefore: 0
    property bool isAtEnd: true
    readonly property bool isFollowing: followAnimation.running

    helpText: "Messages"
    model: view.activeMessages
    reuseItems: true
    spacing: 10
    cacheBuffer: 300
    currentIndex: -1
    activeFocusOnTab: count > 0
    header: Item {
        height: 12
    }
    footer: Item {
        height: 12
    }

    Component.onCompleted: positionViewAtEnd()
    onContentYChanged: isAtEnd = contentY + height >= originY + contentHeight - 2
    onHeightChanged: keepEnd()
    onContentHeightChanged: if (isAtEnd) Qt.callLater(keepEnd)
    onActiveFocusChanged: if (activeFocus && currentIndex < 0) currentIndex = count - 1
    onMovementStarted: followAnimation.stop()
    Keys.onPressed: event => {
        if (event.matches(StandardKey.Copy) && currentItem) {
            view.copyText((currentItem as MessageBubble).body);
            event.accepted = true;
        }
    }

    // What shows at the end stays there when the room or the layout changes.
    function keepEnd() {
        if (isAtEnd && !isFollowing) {
            positionViewAtEnd();
        }
    }

    // Glides to the newest message, over a page at most: what lies between is not laid out.
    function follow() {
        followAnimation.stop();
        const start = contentY;
        positionViewAtEnd();
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
        onFinished: list.positionViewAtEnd()
    }
    Connections {
        target: list.model

        function onCountChanged() {
            list.follow();
        }
        function onModelAboutToBeReset() {
            list.placeBefore = list.contentY;
            list.countBefore = list.count;
        }
        function onModelReset() {
            list.currentIndex = -1;
            list.forceLayout();
            if (list.count === list.countBefore) {
                list.contentY = list.placeBefore;
                list.returnToBounds();
            }
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
        ListView.onPooled: {
            showsAll = false;
            visible = false; // a row in reserve is not to be read out
        }
        ListView.onReused: visible = true
    }
}
