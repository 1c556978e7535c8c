#pragma once

#include "platform/linux/input/X11Display.h"
#include "platform/linux/input/X11Keymap.h"

#include <memory>

namespace brenvale {

/// The layout of the server's keyboard, read anew whenever anybody has changed it. One thread.
class X11Layout {
public:
    explicit X11Layout(X11Display& display) : display_(display) {}

    /// The layout as it is now; null where it cannot be had. The one before is gone. May wait for the server.
    [[nodiscard]] X11Keymap* current() {
        if (display_.takeLayoutChange() || !keymap_) {
            keymap_ = X11Keymap::read(display_);
        }
        return keymap_.get();
    }

private:
    X11Display& display_;
    std::unique_ptr<X11Keymap> keymap_;
};

} // namespace brenvale
