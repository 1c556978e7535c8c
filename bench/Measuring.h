#pragma once

#include <chrono>
#include <vector>

namespace brenvale::bench {

using Clock = std::chrono::steady_clock;

[[nodiscard]] double secondsSince(Clock::time_point start);

/// Seconds that a processor has worked for the calling thread, in the system too.
[[nodiscard]] double threadCpuSeconds();

/// What half of the measured values, and what all but a hundredth of them, do not exceed.
struct Distribution {
    double median;
    double percentile99;
};
[[nodiscard]] Distribution distributionOf(std::vector<double> values);

} // namespace brenvale::bench
