#pragma once

#include "platform/DispatchQueue.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <utility>
#include <vector>

namespace brenvale {

/// A main queue that other threads may hand steps to. The test runs them, and time is what it says.
class SharedQueue final : public DispatchQueue {
public:
    void async(Step step) override {
        const std::scoped_lock lock(mutex_);
        steps_.push_back(std::move(step));
        changed_.notify_one();
    }

    void asyncAfter(std::chrono::milliseconds /*delay*/, Step step) override {
        late_.push_back(std::move(step));
    }

    /// Waits for a step and runs it.
    void runOne() {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [this] { return !steps_.empty(); });
        auto step = std::move(steps_.front());
        steps_.pop_front();
        lock.unlock();
        step();
    }

    /// All delays pass.
    void passTime() {
        for (auto& step : std::exchange(late_, {})) {
            step();
        }
    }

private:
    std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<Step> steps_;
    std::vector<Step> late_;
};

} // namespace brenvale
