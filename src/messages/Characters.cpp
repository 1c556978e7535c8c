#include "messages/Characters.h"

#include <QStringList>
#include <QTextBoundaryFinder>

#include <algorithm>

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

QString beginning(const QString& text, qsizetype length) {
    if (text.size() <= length) {
        return text;
    }
    // Enough to see whether a character goes on beyond the end; the rest may be a book.
    constexpr qsizetype lookAhead = 64;
    const auto start = text.first(std::min(text.size(), length + lookAhead));
    QTextBoundaryFinder characters(QTextBoundaryFinder::Grapheme, start);
    characters.setPosition(length);
    const auto end = characters.isAtBoundary() ? length : characters.toPreviousBoundary();
    return end > 0 ? start.first(end) : firstCharacter(start);
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
