#pragma once

#include <QString>

#include <chrono>
#include <optional>

namespace brenvale {

/// Changes the volume of the default output by `difference` hundredths, within 0 and 100; gives nothing, or
/// why it could not. The balance of the channels stays, and so does the mute. Starts no sound server, and
/// leaves no connection behind. Any thread that may wait: a server that does not answer is given up after
/// `patience`.
[[nodiscard]] std::optional<QString> changeOutputVolume(int difference, std::chrono::milliseconds patience);

/// The volume, in hundredths, that `difference` makes of `present`. Pure.
[[nodiscard]] int changedVolume(int present, int difference);

} // namespace brenvale
