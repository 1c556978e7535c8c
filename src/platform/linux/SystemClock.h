#pragma once

#include "platform/Clock.h"

#include <chrono>
#include <ctime>

namespace brenvale {

class SystemClock final : public Clock {
public:
    [[nodiscard]] double now() const override {
        return std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count();
    }

    [[nodiscard]] double uptime() const override {
        timespec time{};
        (void)::clock_gettime(CLOCK_BOOTTIME, &time);
        return static_cast<double>(time.tv_sec) + (static_cast<double>(time.tv_nsec) * 1e-9);
    }
};

} // namespace brenvale
