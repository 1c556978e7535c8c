#pragma once

#include "platform/DispatchQueue.h"

#include <deque>
#include <utility>
#include <vector>

namespace brenvale {

/// A queue that a test steps by hand: nothing runs until it says so, and time is what it says.
class StepQueue final : public DispatchQueue {
public:
    void async(Step step) override { steps_.push_back(std::move(step)); }

    void asyncAfter(std::chrono::milliseconds delay, Step step) override {
        delayed_.push_back({now_ + delay, std::move(step)});
    }

    /// Runs what waits, and what that adds, until nothing does.
    void run() {
        while (!steps_.empty()) {
            auto step = std::move(steps_.front());
            steps_.pop_front();
            step();
        }
    }

    /// Lets time pass and runs what has come due.
    void pass(std::chrono::milliseconds time) {
        now_ += time;
        for (auto& delayed : std::exchange(delayed_, {})) {
            if (delayed.due <= now_) {
                steps_.push_back(std::move(delayed.step));
            } else {
                delayed_.push_back(std::move(delayed));
            }
        }
        run();
    }

    [[nodiscard]] bool isEmpty() const { return steps_.empty(); }

private:
    struct Delayed {
        std::chrono::milliseconds due;
        Step step;
    };
    std::deque<Step> steps_;
    std::vector<Delayed> delayed_;
    std::chrono::milliseconds now_{0};
};

} // namespace brenvale
