#pragma once

#include "platform/DispatchQueue.h"

#include <QObject>

#include <chrono>
#include <memory>
#include <mutex>
#include <vector>

namespace brenvale {

/// The main queue: Qt's event loop of the thread that made this object. Steps handed over while others wait
/// go along with those in one turn of the loop, which makes a hop cheap; between two turns the loop serves
/// its other events. A step must not run an event loop of its own: those behind it would wait for its end.
class MainQueue final : public QObject, public DispatchQueue {
public:
    void async(Step step) override;
    void asyncAfter(std::chrono::milliseconds delay, Step step) override;

protected:
    bool event(QEvent* event) override;

private:
    using Clock = std::chrono::steady_clock;

    void runSteps();
    void runWhenDue(Clock::time_point due, const std::shared_ptr<Step>& step);

    std::mutex mutex_;
    std::vector<Step> steps_; ///< under `mutex_`; a wake-up is on its way while it is not empty
};

} // namespace brenvale
