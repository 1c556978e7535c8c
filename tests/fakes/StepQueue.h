#pragma once

#include "platform/DispatchQueue.h"

#include <deque>
#include <vector>

namespace brenvale {

/// A queue that a test steps by hand: nothing runs until it says so, and time is what it says.
class StepQueue final : public DispatchQueue {
public:
    void async(Step step) override;
    void asyncAfter(std::chrono::milliseconds delay, Step step) override;

    /// Runs what waits, and what that adds, until nothing does.
    void run();

    /// Lets time pass and runs what has come due.
    void pass(std::chrono::milliseconds time);

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
