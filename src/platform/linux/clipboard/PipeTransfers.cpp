#include "platform/linux/clipboard/PipeTransfers.h"

#include "platform/linux/clipboard/SelectionLimits.h"

#include <algorithm>
#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace brenvale {

namespace {

constexpr qsizetype pieceSize = 256 << 10;

/// The other end keeps its own way.
void setNonBlocking(int descriptor) {
    ::fcntl(descriptor, F_SETFL, ::fcntl(descriptor, F_GETFL) | O_NONBLOCK);
    ::fcntl(descriptor, F_SETFD, FD_CLOEXEC);
}

bool isForLater(int error) {
    return error == EAGAIN || error == EINTR;
}

} // namespace

OwnedDescriptor::~OwnedDescriptor() {
    ::close(descriptor_);
}

PipeReader::PipeReader(int descriptor, std::function<void(std::optional<QByteArray>)> finished)
    : descriptor_(descriptor), arrival_(descriptor, QSocketNotifier::Read), finished_(std::move(finished)) {
    setNonBlocking(descriptor);
    connect(&arrival_, &QSocketNotifier::activated, this, &PipeReader::read);
    for (auto* timer : {&patience_, &limit_}) {
        timer->setSingleShot(true);
        connect(timer, &QTimer::timeout, this, [this] { finish(std::nullopt); });
    }
    patience_.start(patienceForAPiece);
    limit_.start(patienceForAll);
}

void PipeReader::read() {
    const auto before = bytes_.size();
    bytes_.resize(before + pieceSize);
    const auto count = ::read(descriptor_.get(), bytes_.data() + before, pieceSize);
    const int error = errno;
    bytes_.resize(before + std::max<qsizetype>(count, 0));
    if (count == 0) {
        finish(std::move(bytes_));
    } else if ((count < 0 && !isForLater(error)) || bytes_.size() > mostBytesRead) {
        finish(std::nullopt);
    } else {
        patience_.start();
    }
}

void PipeReader::finish(std::optional<QByteArray> bytes) {
    arrival_.setEnabled(false);
    patience_.stop();
    limit_.stop();
    const auto finished = std::exchange(finished_, {});
    finished(std::move(bytes));
}

PipeWriter::PipeWriter(int descriptor, QByteArray bytes, std::function<void()> finished)
    : descriptor_(descriptor),
      room_(descriptor, QSocketNotifier::Write),
      bytes_(std::move(bytes)),
      finished_(std::move(finished)) {
    setNonBlocking(descriptor);
    connect(&room_, &QSocketNotifier::activated, this, &PipeWriter::write);
    connect(&patience_, &QTimer::timeout, this, &PipeWriter::finish);
    patience_.setSingleShot(true);
    patience_.start(patienceForAReader);
}

void PipeWriter::write() {
    const auto rest = QByteArrayView(bytes_).sliced(written_);
    const auto count = ::write(descriptor_.get(), rest.data(), static_cast<std::size_t>(rest.size()));
    if (count < 0 && isForLater(errno)) {
        return;
    }
    written_ += std::max<qsizetype>(count, 0);
    if (count < 0 || written_ == bytes_.size()) {
        finish();
    } else {
        patience_.start();
    }
}

void PipeWriter::finish() {
    room_.setEnabled(false);
    patience_.stop();
    const auto finished = std::exchange(finished_, {});
    finished();
}

} // namespace brenvale
