#pragma once

#include <QByteArray>

#include <set>

namespace brenvale {

/// What can be typed whichever layout of a keymap is active, which no program is told that has not the
/// keyboard: the keysyms that each layout has where Shift or AltGr reach them. A desktop looks for the first
/// key with a keysym; one that it finds farther up first counts as missing. Pure; empty for what is no
/// keymap.
[[nodiscard]] std::set<quint32> keysymsOfEveryLayout(const QByteArray& keymap);

} // namespace brenvale
