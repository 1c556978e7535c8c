#pragma once

#include <QSocketNotifier>

#include <functional>
#include <memory>

namespace brenvale::phone {

/// Turns Ctrl-C and a request to terminate into a call on the main thread's event loop, so that the phone can
/// say goodbye. To be made before any other thread starts, as threads inherit what it blocks.
class InterruptSignals {
public:
    explicit InterruptSignals(std::function<void()> onInterrupt);
    ~InterruptSignals();
    InterruptSignals(const InterruptSignals&) = delete;
    InterruptSignals(InterruptSignals&&) = delete;
    InterruptSignals& operator=(const InterruptSignals&) = delete;
    InterruptSignals& operator=(InterruptSignals&&) = delete;

private:
    int descriptor_;
    std::unique_ptr<QSocketNotifier> notifier_;
};

} // namespace brenvale::phone
