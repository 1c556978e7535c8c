#pragma once

namespace brenvale {

/// A tab of the main window.
struct Tab {
    /// As the settings keep it; the sidebar has an order of its own.
    enum Number : int {
        settings = 0,
        notifications = 1,
        sms = 2,
        info = 3,
        call = 4,
        fileDrop = 5,
        clipboard = 6,
        remote = 7
    };
};

} // namespace brenvale
