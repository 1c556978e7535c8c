#pragma once

#include "platform/Clock.h"

#include <chrono>

namespace brenvale {

class SystemClock final : public Clock {
public:
    [[nodiscard]] double now() const override {
        return std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count();
    }
};

} // namespace brenvale
