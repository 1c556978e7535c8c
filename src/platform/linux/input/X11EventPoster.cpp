#include "platform/linux/input/X11EventPoster.h"

#include "platform/linux/input/X11Worker.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <thread>

#include <QLoggingCategory>

#include <sys/socket.h>

namespace brenvale {

namespace {

Q_LOGGING_CATEGORY(input, "brenvale.input.x11", QtWarningMsg)

} // namespace

/// What the poster and its thread share.
class X11EventPoster::Thread {
public:
    void run();

    /// Ends the thread, or leaves it behind where even a broken connection does not bring it back.
    void end();

    PostedEvents events;
    std::atomic<bool> canPost = true;

private:
    void setDescriptor(int descriptor);
    void breakConnection();
    void finished();
    bool waitForEnd(std::chrono::milliseconds limit);

    std::mutex mutex_;
    std::condition_variable ended_;
    int descriptor_ = -1;   ///< of the connection; guarded by mutex_
    bool hasEnded_ = false; ///< guarded by mutex_
};

void X11EventPoster::Thread::run() {
    if (const auto display = X11Display::open()) {
        setDescriptor(display->descriptor());
        qCDebug(input) << "the X server takes events";
        X11Worker(events, *display).run();
        setDescriptor(-1);
    }
    qCDebug(input) << "no X server takes events";
    canPost = false;
    events.close();
    finished();
}

void X11EventPoster::Thread::setDescriptor(int descriptor) {
    const std::scoped_lock lock(mutex_);
    descriptor_ = descriptor;
}

void X11EventPoster::Thread::finished() {
    const std::scoped_lock lock(mutex_);
    hasEnded_ = true;
    ended_.notify_all();
}

bool X11EventPoster::Thread::waitForEnd(std::chrono::milliseconds limit) {
    std::unique_lock lock(mutex_);
    return ended_.wait_for(lock, limit, [this] { return hasEnded_; });
}

void X11EventPoster::Thread::breakConnection() {
    const std::scoped_lock lock(mutex_);
    if (descriptor_ >= 0) {
        ::shutdown(descriptor_, SHUT_RDWR);
    }
}

void X11EventPoster::Thread::end() {
    constexpr std::chrono::milliseconds patience{800};
    constexpr std::chrono::milliseconds patienceForBroken{200};
    canPost = false;
    events.close();
    if (!waitForEnd(patience)) {
        breakConnection();
        waitForEnd(patienceForBroken);
    }
}

X11EventPoster::X11EventPoster() : thread_(std::make_shared<Thread>()) {
    std::thread([thread = thread_] { thread->run(); }).detach();
}

X11EventPoster::~X11EventPoster() {
    end();
}

void X11EventPoster::end() {
    thread_->end();
}

bool X11EventPoster::canMakeEvents() const {
    return thread_->canPost;
}

QPointF X11EventPoster::pointerLocation() const {
    return pointer_.location();
}

void X11EventPoster::post(const KeyEvent& event) {
    thread_->events.add(event);
}

void X11EventPoster::post(const SystemDefinedEvent& event) {
    thread_->events.add(event);
}

void X11EventPoster::post(const MouseEvent& event) {
    thread_->events.add(pointer_.follow(event));
}

} // namespace brenvale
