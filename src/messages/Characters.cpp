#include "messages/Characters.h"

#include <QStringList>
#include <QTextBoundaryFinder>

namespace brenvale {

QString firstCharacter(const QString& text) {
    if (text.isEmpty()) {
        return {};
    }
    QTextBoundaryFinder characters(QTextBoundaryFinder::Grapheme, text);
    return text.first(characters.toNextBoundary());
}

QString withoutLastCharacter(const QString& text) {
    if (text.isEmpty()) {
        return {};
    }
    QTextBoundaryFinder characters(QTextBoundaryFinder::Grapheme, text);
    characters.toEnd();
    return text.first(characters.toPreviousBoundary());
}

QString initials(const QString& name) {
    if (name.isEmpty()) {
        return QStringLiteral("?");
    }
    const auto words = name.split(u' ', Qt::SkipEmptyParts);
    const auto letters =
        words.size() > 1 ? firstCharacter(words[0]) + firstCharacter(words[1]) : firstCharacter(name);
    return letters.toUpper();
}

} // namespace brenvale
