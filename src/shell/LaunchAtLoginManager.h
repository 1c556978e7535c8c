#pragma once

namespace brenvale {

struct Platform;

/// Whether the program starts at login. Keeps no state: each read asks the desktop. On main.
class LaunchAtLoginManager {
public:
    LaunchAtLoginManager() = delete;

    [[nodiscard]] static bool isEnabled(const Platform& platform);

    /// A failure is only logged: who wants to know the result reads `isEnabled` again.
    static void setEnabled(const Platform& platform, bool enabled);
};

} // namespace brenvale
