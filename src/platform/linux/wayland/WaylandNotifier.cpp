#include "platform/linux/wayland/WaylandNotifier.h"

#include <chrono>
#include <utility>

namespace brenvale {

namespace {

constexpr std::chrono::seconds patienceForServices{5};

} // namespace

WaylandNotifier::WaylandNotifier(std::unique_ptr<WaylandConnection> connection)
    : connection_(std::move(connection)),
      reading_(connection_->descriptor(), QSocketNotifier::Read),
      writing_(connection_->descriptor(), QSocketNotifier::Write) {
    writing_.setEnabled(false);
    patience_.setSingleShot(true);
    connect(&reading_, &QSocketNotifier::activated, this, &WaylandNotifier::process);
    connect(&writing_, &QSocketNotifier::activated, this, &WaylandNotifier::flush);
    connect(&patience_, &QTimer::timeout, this, [this] { afterFlush(false); });
    patience_.start(patienceForServices);
    flush();
}

void WaylandNotifier::process() {
    afterFlush(connection_->process());
    if (!hasEnded_ && !isReady_ && connection_->isReady()) {
        isReady_ = true;
        patience_.stop();
        if (ready) {
            ready();
        }
    }
}

void WaylandNotifier::flush() {
    afterFlush(connection_->flush());
}

void WaylandNotifier::afterFlush(bool isAlive) {
    if (isAlive) {
        writing_.setEnabled(connection_->hasUnsent());
        return;
    }
    if (std::exchange(hasEnded_, true)) {
        return;
    }
    reading_.setEnabled(false);
    writing_.setEnabled(false);
    patience_.stop();
    // Behind the present step: who flushes is not told in the middle of it.
    QTimer::singleShot(0, this, [this] {
        if (ended) {
            ended();
        }
    });
}

} // namespace brenvale
