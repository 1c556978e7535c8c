#pragma once

#include <QByteArrayList>

#include <span>

namespace brenvale {

/// Puts the address of a file (file:///...) in the place of each argument of the process that is no text in
/// UTF-8: the toolkit would replace its odd bytes, in an address they stay what they are. Returns what the
/// arguments point to from then on, to be kept as long as they are used. Before the application is made.
[[nodiscard]] QByteArrayList addressOddArguments(std::span<char*> arguments);

} // namespace brenvale
