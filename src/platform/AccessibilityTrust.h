#pragma once

#include "records/Published.h"

#include <functional>

namespace brenvale {

/// Whether the desktop lets the program post keys and pointer events to other programs: the one answer for
/// whoever posts, for the window and for the start.
class AccessibilityTrust {
public:
    enum class State : signed char {
        impossible, ///< and there is nobody to ask
        toBeAsked,  ///< the user has not consented, or not yet
        trusted,    ///< events can be posted at this moment
    };

    virtual ~AccessibilityTrust() = default;

    /// What holds at this moment. Any thread; never blocks.
    [[nodiscard]] virtual State state() const = 0;

    /// Whether the state is trusted. Any thread; never blocks. With `prompt`, on main alone, the desktop asks
    /// the user first where that can be done and the user has never refused; the answer shows later.
    [[nodiscard]] virtual bool isProcessTrusted(bool prompt) = 0;

    /// The user wants to consent: the desktop asks where the state is to be asked, refused before or not. On
    /// main; never blocks.
    virtual void askUser() = 0;

    /// Calls `observer` at once, and whenever the state may have changed. On main.
    [[nodiscard]] virtual Subscription observe(std::function<void()> observer) = 0;
};

} // namespace brenvale
