#pragma once

#include <QString>

namespace brenvale {

/// Characters are what a reader sees as one, however many code points that takes. Pure, all of them.

[[nodiscard]] QString firstCharacter(const QString& text);
[[nodiscard]] QString withoutLastCharacter(const QString& text);

/// The first characters of `text`, of `length` code units at most but for a first character that is longer.
[[nodiscard]] QString beginning(const QString& text, qsizetype length);

/// Two capitals for a name of several words, one for another; "?" for no name.
[[nodiscard]] QString initials(const QString& name);

} // namespace brenvale
