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

    function textOfLines(): string {
        const lineHeight = measure.contentHeight / measure.lineCount;
        const end = measure.positionAt(cut.width, lineHeight * (cut.maximumLineCount - 0.5));
        // Two characters of a full line make room for the ellipsis; no half of a pair may be left.
        const room = cut.beginning.charAt(end) === "\n" ? 0 : 2;
        const kept = cut.beginning.slice(0, Math.max(0, end - room));
        return kept.replace(/[\uD800-\uDBFF]$/, "").trim() + "…";
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
