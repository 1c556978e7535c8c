#pragma once

#include <QPoint>

namespace brenvale {

/// Whether some screen shows that place: one that did may be unplugged, or smaller, by now. On main.
[[nodiscard]] bool isOnAScreen(const QPoint& place);

} // namespace brenvale
