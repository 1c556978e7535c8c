#include "notifications/PhoneNumberTitle.h"

#include <QTextBoundaryFinder>

namespace brenvale {

namespace {

/// Whether the first code point of the character is of one of the number categories: digits, letters such as
/// Roman numerals, and others such as fractions.
bool isNumber(QStringView character) {
    const auto first = character.front();
    const char32_t codePoint = first.isHighSurrogate() && character.size() > 1
                                   ? QChar::surrogateToUcs4(first, character[1])
                                   : first.unicode();
    switch (QChar::category(codePoint)) {
    case QChar::Number_DecimalDigit:
    case QChar::Number_Letter:
    case QChar::Number_Other:
        return true;
    default:
        return false;
    }
}

} // namespace

bool looksLikePhoneNumber(const QString& text) {
    if (text.isEmpty()) {
        return false;
    }
    QTextBoundaryFinder characters(QTextBoundaryFinder::Grapheme, text);
    int count = 0;
    int numbers = 0;
    qsizetype start = 0;
    for (auto end = characters.toNextBoundary(); end > start; end = characters.toNextBoundary()) {
        const auto character = QStringView(text).sliced(start, end - start);
        if (count == 0 && character == u"+") {
            return true;
        }
        ++count;
        numbers += isNumber(character) ? 1 : 0;
        start = end;
    }
    return count >= 7 && static_cast<double>(numbers) / static_cast<double>(count) > 0.8;
}

} // namespace brenvale
