#include "platform/MainQueue.h"

#include <QCoreApplication>
#include <QTimer>

#include <memory>
#include <utility>

namespace brenvale {

namespace {

const auto wakeUp = static_cast<QEvent::Type>(QEvent::registerEventType());

} // namespace

void MainQueue::async(Step step) {
    bool isFirst = false;
    {
        const std::scoped_lock lock(mutex_);
        isFirst = steps_.empty();
        steps_.push_back(std::move(step));
    }
    if (isFirst) {
        QCoreApplication::postEvent(this, std::make_unique<QEvent>(wakeUp).release());
    }
}

void MainQueue::asyncAfter(std::chrono::milliseconds delay, Step step) {
    // The timer has to be made on the main thread, and Qt copies what it calls.
    async([this, delay, shared = std::make_shared<Step>(std::move(step))] {
        QTimer::singleShot(delay, this, [shared] { (*shared)(); });
    });
}

bool MainQueue::event(QEvent* event) {
    if (event->type() == wakeUp) {
        runSteps();
        return true;
    }
    return QObject::event(event);
}

void MainQueue::runSteps() {
    std::vector<Step> steps;
    {
        const std::scoped_lock lock(mutex_);
        steps.swap(steps_);
    }
    for (auto& step : steps) {
        step();
    }
}

} // namespace brenvale
