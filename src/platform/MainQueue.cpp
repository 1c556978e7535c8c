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
    async([this, due = Clock::now() + delay, shared = std::make_shared<Step>(std::move(step))] {
        runWhenDue(due, shared);
    });
}

void MainQueue::runWhenDue(Clock::time_point due, const std::shared_ptr<Step>& step) {
    const auto rest = std::chrono::ceil<std::chrono::milliseconds>(due - Clock::now());
    if (rest.count() <= 0) {
        (*step)();
        return;
    }
    // Qt's timers may come too soon: by a twentieth, were they not told to be precise.
    QTimer::singleShot(rest, Qt::PreciseTimer, this, [this, due, step] { runWhenDue(due, step); });
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
