#pragma once

namespace brenvale {

/// A small panel of 350 by 80, at first 20 from the top and right edges of the usable area of the primary
/// screen, above everything, on all workspaces. It never takes the keyboard from the program that has it, and
/// the user drags it by its background. What it shows it follows by itself. On main.
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
