#pragma once

#include <QString>

namespace brenvale {

/// The decimal digits of a text, of any script, in order and as they are. Pure.
[[nodiscard]] QString decimalDigits(QStringView text);

/// The one form in which addresses are compared: the last ten of the decimal digits, so that country codes
/// and punctuation fall away; the whole address in lower case where it has no digit. Pure.
[[nodiscard]] QString normalizeAddress(const QString& address);

/// The text without blanks and tabs at its ends; line feeds stay. Pure.
[[nodiscard]] QString trimmedBlanks(const QString& text);

/// Whether a text reads as a phone number that is being typed: digits alone, or a digit somewhere behind a
/// leading plus sign. Pure.
[[nodiscard]] bool looksNumeric(const QString& text);

} // namespace brenvale
