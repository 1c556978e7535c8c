#pragma once

#include "platform/linux/DisplayProbe.h"
#include "platform/linux/input/LinuxEventPoster.h"

#include <functional>

namespace brenvale {

class DispatchQueue;
class InputConsent;
class TextLender;

/// How this session takes events: on X11 by XTEST, on Wayland by the compositor's virtual keyboard and
/// pointer, else by the desktop's portal. Only where there is none of these, by the kernel's input device, if
/// the user may write it: never beside a portal, and never in spite of a refusal.
struct InputWays {
    LinuxEventPoster::Ways ways;     ///< the best first
    InputConsent* consent = nullptr; ///< one of the ways, where that needs the user's consent

    /// Empty where the desktop keeps nothing of us. Else puts back what it would keep, a changed layout say,
    /// and has events vanish from then on; takes about a second at most. Any thread, while the ways live.
    std::function<void()> putBack;
};

/// On main, after the application object. `lender` is null where no text can be pasted; both live for longer.
[[nodiscard]] InputWays inputWays(const Display& display, DispatchQueue& main, TextLender* lender);

} // namespace brenvale
