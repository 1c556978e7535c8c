#pragma once

namespace brenvale {

/// What the time is. Any thread.
class Clock {
public:
    virtual ~Clock() = default;

    /// Seconds since 1 January 1970, UTC, with a fraction: the wall clock, which can be set back.
    [[nodiscard]] virtual double now() const = 0;

    /// Seconds since some moment in the past, with a fraction: for spans of time. Nobody sets it, and it goes
    /// on while the computer sleeps.
    [[nodiscard]] virtual double uptime() const = 0;
};

} // namespace brenvale
