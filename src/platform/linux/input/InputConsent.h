#pragma once

#include "records/Published.h"

#include <functional>

namespace brenvale {

/// The user's consent to keys and pointer events, where the desktop has a dialog for it.
class InputConsent {
public:
    virtual ~InputConsent() = default;

    /// Whether there is somebody to ask. Any thread; never blocks.
    [[nodiscard]] virtual bool canAsk() const = 0;

    /// Whether the user has refused, now or in an earlier run. On main.
    [[nodiscard]] virtual bool wasRefused() const = 0;

    /// Has the desktop ask, unless it is asking or the user has consented. On main; never blocks.
    virtual void ask() = 0;

    /// Calls `observer` when the user has answered and when the consent or the dialog comes or goes. On main.
    [[nodiscard]] virtual Subscription observe(std::function<void()> observer) = 0;
};

} // namespace brenvale
