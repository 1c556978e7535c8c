import QtQuick
import Brenvale

// The open thread and the line to answer in.
Item {
    id: pane

    required property SendSmsState sms

    // To type an answer in; null where no thread is open.
    readonly property Item field: (thread.item as Thread)?.field ?? null

    EmptyState {
        anchors.fill: parent
        visible: !pane.sms.hasActiveRecipient
        symbol: "dialog-messages"
        symbolSize: 48
        title: "Select a conversation or search for a contact to begin."
        titleWidth: 300
        spacing: 12
    }
    Loader {
        id: thread

        readonly property bool isWanted: pane.sms.hasActiveRecipient

        anchors.fill: parent
        onIsWantedChanged: load()
        Component.onCompleted: load()

        function load() {
            if (isWanted) {
                setSource("Thread.qml", {sms: pane.sms});
            }
        }
    }
}
