#pragma once

#include <QStringList>

#include <array>

namespace brenvale {

/// Stands for a text where it need only be compared: two texts with one digest are the same text.
using TextDigest = std::array<char, 32>;

/// That of `parts` joined by colons, without joining them. Pure.
[[nodiscard]] TextDigest textDigest(const QStringList& parts);

} // namespace brenvale
