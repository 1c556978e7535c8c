#include "messages/LowerCase.h"

namespace brenvale {

namespace {

/// The one character whose lower case is longer than itself.
constexpr QChar capitalIWithDot(0x130);

QChar lowerCase(QChar character) {
    const auto unit = character.unicode();
    if (unit < 0x80) {
        return QChar(unit >= u'A' && unit <= u'Z' ? unit + (u'a' - u'A') : unit);
    }
    return character.toLower();
}

} // namespace

QString lowerCase(const QString& text) {
    QString lower(text.size(), Qt::Uninitialized);
    auto* out = lower.data();
    for (qsizetype at = 0; at < text.size(); ++at) {
        const auto character = text[at];
        if (character == capitalIWithDot) {
            return text.toLower();
        }
        if (character.isHighSurrogate() && at + 1 < text.size() && text[at + 1].isLowSurrogate()) {
            const auto codePoint = QChar::toLower(QChar::surrogateToUcs4(character, text[at + 1]));
            out[at] = QChar(QChar::highSurrogate(codePoint));
            out[++at] = QChar(QChar::lowSurrogate(codePoint));
        } else {
            out[at] = lowerCase(character);
        }
    }
    return lower;
}

} // namespace brenvale
