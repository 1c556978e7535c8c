#pragma once

#include <QSize>

namespace brenvale {

/// The size of a panel, in device-independent pixels.
constexpr QSize panelSize(350, 80);

/// How far a panel is at first from the top and right edges of the usable area of the primary screen.
constexpr int panelMargin = 20;

/// A small panel of `panelSize` in that corner, above everything, on all workspaces. It never takes the
/// keyboard from the program that has it, and the user drags it by its background. What it shows it follows
/// by itself. On main.
class FloatingPanel {
public:
    /// Takes it off the screen.
    virtual ~FloatingPanel() = default;

    /// Shows it above everything else. A panel that is on show stays where the user dragged it.
    virtual void orderFrontRegardless() = 0;

    /// Takes it off the screen.
    virtual void orderOut() = 0;
};

} // namespace brenvale
