#pragma once

#include <functional>

namespace brenvale {

/// The main window as the rest of the program sees it. Nothing of it exists before it is made; closed it
/// keeps the view's state and gives back what showing it takes. On main.
class MainWindow {
public:
    virtual ~MainWindow() = default;

    /// Called when the user closes it.
    std::function<void()> windowWillClose;

    /// Whether it is on show, in front or not; a minimised window is not.
    [[nodiscard]] virtual bool isVisible() const = 0;

    /// Shows it, brings it to the front and gives it the keyboard: the user asked for it.
    virtual void makeKeyAndOrderFront() = 0;
};

} // namespace brenvale
