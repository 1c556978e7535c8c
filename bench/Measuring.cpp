#include "Measuring.h"

#include <algorithm>
#include <ctime>

namespace brenvale::bench {

double secondsSince(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

double threadCpuSeconds() {
    timespec time{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + (1e-9 * static_cast<double>(time.tv_nsec));
}

Distribution distributionOf(std::vector<double> values) {
    if (values.empty()) {
        return {};
    }
    std::ranges::sort(values);
    return {.median = values[values.size() / 2], .percentile99 = values[values.size() * 99 / 100]};
}

} // namespace brenvale::bench
