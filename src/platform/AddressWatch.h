#pragma once

#include "records/Published.h"

#include <functional>

namespace brenvale {

/// Changes of the computer's network adapters and of their addresses. On main.
class AddressWatch {
public:
    virtual ~AddressWatch() = default;

    /// Calls `observer` whenever an address may have come, gone or changed, and costs nothing once it is let
    /// go.
    [[nodiscard]] virtual Subscription observe(std::function<void()> observer) = 0;
};

} // namespace brenvale
