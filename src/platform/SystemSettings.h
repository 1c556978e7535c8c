#pragma once

#include <QtGlobal>

namespace brenvale {

/// The desktop's own settings program. On main.
class SystemSettings {
public:
    enum class Pane : qint8 { notifications, accessibility };

    virtual ~SystemSettings() = default;

    /// Opens the program at `pane`, or as near to it as the desktop can; nothing happens where it has none.
    virtual void open(Pane pane) = 0;
};

} // namespace brenvale
