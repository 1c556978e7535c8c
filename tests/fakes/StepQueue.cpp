#include "fakes/StepQueue.h"

#include <utility>

namespace brenvale {

void StepQueue::async(Step step) {
    steps_.push_back(std::move(step));
}

void StepQueue::asyncAfter(std::chrono::milliseconds delay, Step step) {
    delayed_.push_back({now_ + delay, std::move(step)});
}

void StepQueue::run() {
    while (!steps_.empty()) {
        auto step = std::move(steps_.front());
        steps_.pop_front();
        step();
    }
}

void StepQueue::pass(std::chrono::milliseconds time) {
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

} // namespace brenvale
