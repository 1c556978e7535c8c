#pragma once

namespace brenvale {

/// The wall clock. Any thread.
class Clock {
public:
    virtual ~Clock() = default;

    /// Seconds since 1 January 1970, UTC, with a fraction.
    [[nodiscard]] virtual double now() const = 0;
};

} // namespace brenvale
