#pragma once

#include <QColor>

#include <optional>

namespace brenvale {

/// The colour that suits pictures in the desktop's tray, where the desktop tells it or is known for it; the
/// palette of windows says nothing of panels. On main.
[[nodiscard]] std::optional<QColor> trayColor();

} // namespace brenvale
