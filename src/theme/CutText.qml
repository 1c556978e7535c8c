import QtQuick
import Brenvale

// Text that can be marked and copied, cut with an ellipsis after some lines.
Item {
    id: cut

    required property string content
    property int maximumLineCount: 1

    // More than the lines of the widest window hold; a text may be a book.
    readonly property string beginning: content.slice(0, maximumLineCount * 600)
    readonly property bool isCut: measure.lineCount > maximumLineCount || beginning.length < content.length

    implicitHeight: text.implicitHeight

    function textOfLines() {
        const lineHeight = measure.contentHeight / measure.lineCount;
        const end = measure.positionAt(cut.width, lineHeight * (cut.maximumLineCount - 0.5));
        const characters = Array.from(cut.beginning.slice(0, end));
        return characters.slice(0, -2).join("").trimEnd() + "…";
    }

    SelectableText {
        id: text

        width: parent.width
        text: cut.isCut ? cut.textOfLines() : cut.content
        Accessible.name: cut.content
    }
    SelectableText {
        id: measure

        width: parent.width
        visible: false
        text: cut.beginning
        font: text.font
    }
}
