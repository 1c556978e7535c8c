#pragma once

namespace brenvale {

/// The number of each tab of the main window, as the settings keep it; the sidebar has an order of its own.
enum Tab : int {
    SettingsTab = 0,
    NotificationsTab = 1,
    SmsTab = 2,
    InfoTab = 3,
    CallTab = 4,
    FileDropTab = 5,
    ClipboardTab = 6,
    RemoteTab = 7
};

} // namespace brenvale
