#pragma once

#include <functional>

namespace brenvale {

/// The computer's sleep, as the system announces it. On main.
class SystemSleep {
public:
    virtual ~SystemSleep() = default;

    /// Called each time that the computer has woken up again.
    std::function<void()> didWake;
};

} // namespace brenvale
