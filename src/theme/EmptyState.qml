import QtQuick
import Brenvale

// What an area shows while there is nothing to show in it.
Item {
    id: state

    required property string symbol
    property string decoration
    property real symbolSize: 48
    property color symbolColor: Theme.faded(0.18, 3)
    property string title
    property font titleFont: Theme.callout
    property color titleColor: Theme.secondary
    property string description
    property int spacing: 12
    property int titleWidth: 360 // at most

    Column {
        anchors.centerIn: parent
        width: Math.min(parent.width - 2 * Theme.padding, state.titleWidth)
        spacing: state.spacing

        Symbol {
            anchors.horizontalCenter: parent.horizontalCenter
            name: state.symbol
            decoration: state.decoration
            size: state.symbolSize
            color: state.symbolColor
        }
        Label {
            visible: text !== ""
            width: parent.width
            text: state.title
            font: state.titleFont
            color: state.titleColor
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
        }
        Label {
            visible: text !== ""
            width: parent.width
            text: state.description
            font: Theme.callout
            color: Theme.secondary
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
        }
    }
}
