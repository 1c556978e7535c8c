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
        // Lines differ in height: those with an emoji are taller.
        let line = measure.positionToRectangle(0);
        for (let number = 1; number < cut.maximumLineCount; ++number) {
            line = measure.positionToRectangle(measure.positionAt(0, line.y + line.height + 1));
        }
        const end = measure.positionAt(cut.width, line.y + line.height / 2);
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
