#pragma once

namespace brenvale {

/// Whether the desktop lets the program post keys and pointer events to other programs. Never blocks.
class AccessibilityTrust {
public:
    virtual ~AccessibilityTrust() = default;

    /// With `prompt` the desktop asks the user where it has a way to and events cannot be posted yet; the
    /// user's answer shows in later calls alone. On main with `prompt`, without it any thread.
    [[nodiscard]] virtual bool isProcessTrusted(bool prompt) = 0;
};

} // namespace brenvale
