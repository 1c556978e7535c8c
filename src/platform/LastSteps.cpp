#include "platform/LastSteps.h"

#include <mutex>
#include <utility>

namespace brenvale {

namespace {

struct LastSteps {
    std::recursive_mutex mutex; // a step may itself find what must not be
    std::function<void()> steps;
};

/// Never destroyed: threads may end the process while it takes itself down.
LastSteps& lastSteps() {
    static auto& instance = *new LastSteps; // NOLINT(cppcoreguidelines-owning-memory)
    return instance;
}

} // namespace

void setLastSteps(std::function<void()> steps) {
    auto& last = lastSteps();
    const std::scoped_lock lock(last.mutex);
    last.steps = std::move(steps);
}

void runLastSteps() {
    auto& last = lastSteps();
    const std::scoped_lock lock(last.mutex);
    if (last.steps) {
        last.steps();
    }
}

} // namespace brenvale
