#pragma once

#include <QColor>
#include <QIcon>

namespace brenvale {

/// The tray's picture in one colour: the program's own, else the antenna of the desktop's icon theme.
[[nodiscard]] QIcon statusIcon(const QColor& color);

} // namespace brenvale
