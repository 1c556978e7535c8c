#pragma once

#include <QColor>
#include <QIcon>

#include <optional>

namespace brenvale {

/// The tray's icon. Where the program's symbolic icon is installed it has that name, by which a panel finds
/// it and tints it as it does its own. For panels that take pictures alone it has those too: in `color`, or,
/// where nobody tells on what they will stand, light with a dark edge, which shows on any panel.
[[nodiscard]] QIcon statusIcon(const std::optional<QColor>& color);

} // namespace brenvale
