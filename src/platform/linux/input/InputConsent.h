#pragma once

#include "records/Published.h"

#include <functional>

namespace brenvale {

/// The user's consent to keys and pointer events, where the desktop has a dialog for it.
class InputConsent {
public:
    /// Why the user is asked: a start does not ask again who has refused once.
    enum class Occasion : signed char { start, usersWish };

    virtual ~InputConsent() = default;

    /// Whether there is somebody to ask. Any thread; never blocks.
    [[nodiscard]] virtual bool canAsk() const = 0;

    /// Whether it is certain that there is nobody to ask, and was nobody before, and no refusal stands. Not
    /// so while that is still being looked for. Any thread; never blocks.
    [[nodiscard]] virtual bool hasNobodyToAsk() const = 0;

    /// Has the desktop ask, unless it is asking or the user has consented; as soon as it can where a session
    /// is still starting. On main; never blocks.
    virtual void ask(Occasion occasion) = 0;

    /// Calls `observer` at once, when the user has answered, and when the consent or the dialog comes or
    /// goes. On main.
    [[nodiscard]] virtual Subscription observe(std::function<void()> observer) = 0;
};

} // namespace brenvale
