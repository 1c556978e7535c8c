#include "platform/linux/LineWriter.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <pthread.h>
#include <sys/eventfd.h>
#include <sys/stat.h>
#include <unistd.h>

namespace brenvale {

namespace {

/// Lines that wait together leave together, up to this many bytes.
constexpr qsizetype atOnce = 16 << 10;

QByteArray leftOutLine(quint64 count) {
    return "[Log] " + QByteArray::number(count) + " lines were not read in time and are left out\n";
}

bool isOf(const struct stat& kind, mode_t type) {
    return (kind.st_mode & S_IFMT) == type;
}

/// The same pipe or terminal, opened anew: so that our writes need not wait, while those of others who share
/// the descriptor do as before. -1 where that cannot be.
int openedAnew(int descriptor) {
    const auto path = "/proc/self/fd/" + QByteArray::number(descriptor);
    return ::open(path.constData(), O_WRONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
}

} // namespace

LineWriter::LineWriter(int descriptor, qsizetype bound)
    : descriptor_(descriptor), bound_(bound), end_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
    struct stat kind{};
    (void)::fstat(descriptor, &kind);
    if (isOf(kind, S_IFIFO) || isOf(kind, S_IFCHR)) {
        if (const int own = openedAnew(descriptor); own >= 0) {
            descriptor_ = own;
            isOwn_ = true;
        }
    }
    takesAtOnce_ = isOwn_ || isOf(kind, S_IFREG);
}

LineWriter::~LineWriter() {
    flush();
    {
        const std::scoped_lock lock(mutex_);
        isEnding_ = true;
    }
    changed_.notify_all();
    (void)::eventfd_write(end_, 1);
    if (thread_.joinable()) {
        thread_.join();
    }
    ::close(end_);
    if (isOwn_) {
        ::close(descriptor_);
    }
}

void LineWriter::line(QByteArrayView text) {
    const auto whole = text.toByteArray() + '\n';
    const std::scoped_lock lock(mutex_);
    if (takesAtOnce_ && waiting_.empty() && !isWriting_) {
        begun_ = writeAtOnce(whole).toByteArray();
        if (begun_.isEmpty()) {
            return;
        }
        isWriting_ = true; // the rest of it is what is written next
    } else {
        keepWaiting(whole);
    }
    if (!thread_.joinable()) {
        thread_ = std::thread([this] { run(); });
    }
    changed_.notify_all();
}

/// What is left of `text` when its reader takes no more.
QByteArrayView LineWriter::writeAtOnce(QByteArrayView text) const {
    while (!text.isEmpty()) {
        const auto written = ::write(descriptor_, text.data(), static_cast<std::size_t>(text.size()));
        if (written > 0) {
            text = text.sliced(written);
        } else if (errno == EAGAIN) {
            return text;
        } else if (errno != EINTR) {
            return {};
        }
    }
    return text;
}

void LineWriter::keepWaiting(const QByteArray& line) {
    size_ += line.size();
    waiting_.push_back(line);
    while (size_ > bound_ && waiting_.size() > 1) {
        size_ -= waiting_.front().size();
        waiting_.pop_front();
        ++leftOut_;
    }
}

void LineWriter::flush(std::chrono::milliseconds patience, std::chrono::milliseconds limit) {
    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + limit;
    std::unique_lock lock(mutex_);
    const auto isOut = [this] {
        return waiting_.empty() && !isWriting_;
    };
    for (auto before = progress_; !isOut(); before = progress_) {
        const auto until = std::min(Clock::now() + patience, end);
        if (!changed_.wait_until(lock, until, [&] { return isOut() || progress_ != before; }) ||
            Clock::now() >= end) {
            return;
        }
    }
}

void LineWriter::run() {
    ::pthread_setname_np(::pthread_self(), "log");
    for (auto text = takeWaiting(); !text.isEmpty(); text = takeWaiting()) {
        write(text);
    }
}

/// Waits for lines; nothing at the end.
QByteArray LineWriter::takeWaiting() {
    std::unique_lock lock(mutex_);
    isWriting_ = !begun_.isEmpty();
    changed_.notify_all();
    changed_.wait(lock, [this] { return isEnding_ || !begun_.isEmpty() || !waiting_.empty(); });
    if (isEnding_) {
        return {};
    }
    isWriting_ = true;
    if (!begun_.isEmpty()) {
        return std::exchange(begun_, {});
    }
    QByteArray text;
    if (const auto count = std::exchange(leftOut_, 0); count > 0) {
        text = leftOutLine(count);
    }
    do {
        size_ -= waiting_.front().size();
        text += waiting_.front();
        waiting_.pop_front();
    } while (!waiting_.empty() && text.size() < atOnce);
    return text;
}

void LineWriter::write(QByteArrayView text) {
    while (!text.isEmpty() && waitForReader()) {
        // A pipe that takes anything takes this much at once, also where a write to it may wait.
        const auto size = std::min<qsizetype>(text.size(), PIPE_BUF);
        const auto written = ::write(descriptor_, text.data(), static_cast<std::size_t>(size));
        if (written > 0) {
            text = text.sliced(written);
            wrote();
        } else if (errno != EAGAIN && errno != EINTR) {
            return;
        }
    }
}

/// False at the end. A reader that is gone counts as one: the write tells.
bool LineWriter::waitForReader() const {
    pollfd events[]{{.fd = descriptor_, .events = POLLOUT, .revents = 0},
                    {.fd = end_, .events = POLLIN, .revents = 0}};
    while (::poll(events, std::size(events), -1) < 0 && errno == EINTR) {
    }
    return events[1].revents == 0;
}

void LineWriter::wrote() {
    const std::scoped_lock lock(mutex_);
    ++progress_;
    changed_.notify_all();
}

} // namespace brenvale
