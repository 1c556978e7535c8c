#include "messages/Addresses.h"

namespace brenvale {

namespace {

constexpr int comparedDigits = 10;

bool isDecimalDigit(char32_t codePoint) {
    return QChar::category(codePoint) == QChar::Number_DecimalDigit;
}

bool isBlank(QChar character) {
    return character == u'\t' || character.category() == QChar::Separator_Space;
}

/// The end of `digits` from the last `count` code points on.
QString lastDigits(const QString& digits, int count) {
    qsizetype start = digits.size();
    for (; count > 0 && start > 0; --count) {
        start -= start > 1 && digits[start - 1].isLowSurrogate() ? 2 : 1;
    }
    return digits.sliced(start);
}

} // namespace

QString decimalDigits(QStringView text) {
    QString digits;
    digits.reserve(text.size());
    for (qsizetype at = 0; at < text.size(); ++at) {
        if (text[at].isHighSurrogate() && at + 1 < text.size() && text[at + 1].isLowSurrogate()) {
            if (isDecimalDigit(QChar::surrogateToUcs4(text[at], text[at + 1]))) {
                digits += text.sliced(at, 2);
            }
            ++at;
        } else if (isDecimalDigit(text[at].unicode())) {
            digits += text[at];
        }
    }
    return digits;
}

QString normalizeAddress(const QString& address) {
    const auto digits = decimalDigits(address);
    return digits.isEmpty() ? address.toLower() : lastDigits(digits, comparedDigits);
}

QString trimmedBlanks(const QString& text) {
    qsizetype start = 0;
    qsizetype end = text.size();
    while (start < end && isBlank(text[start])) {
        ++start;
    }
    while (end > start && isBlank(text[end - 1])) {
        --end;
    }
    return text.sliced(start, end - start);
}

bool looksNumeric(const QString& text) {
    const auto trimmed = trimmedBlanks(text);
    const auto digits = decimalDigits(text);
    return !digits.isEmpty() && (trimmed == digits || trimmed.startsWith(u'+'));
}

} // namespace brenvale
