#pragma once

#include "platform/AccessibilityTrust.h"
#include "platform/linux/DisplayProbe.h"
#include "platform/linux/RemoteDesktopPortal.h"

#include <utility>

namespace brenvale {

/// Trusted where one of the ways to post events works: the display's own, the desktop's consent, or the
/// kernel's input device where this user may write it. On Wayland the prompt is the desktop's consent dialog;
/// elsewhere there is nothing to ask.
class EventPostingTrust final : public AccessibilityTrust {
public:
    explicit EventPostingTrust(Display display) : display_(std::move(display)) {}

    [[nodiscard]] bool isProcessTrusted(bool prompt) override;

private:
    Display display_;
    RemoteDesktopPortal portal_;
};

} // namespace brenvale
