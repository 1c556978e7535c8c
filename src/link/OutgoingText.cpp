#include "link/OutgoingText.h"

#include <QDir>
#include <QStandardPaths>

#include <algorithm>
#include <utility>

#include <malloc.h>

namespace brenvale {

namespace {

/// The C library keeps up to this much for the next file.
constexpr std::size_t keptMemory = std::size_t{8} << 20;

class TextInMemory final : public OutgoingText {
public:
    /// `memory` may be null; else it counts this text for as long as it lives.
    TextInMemory(QByteArray text, std::shared_ptr<OutgoingMemory> memory)
        : text_(std::move(text)), memory_(std::move(memory)) {
        if (memory_) {
            memory_->add(static_cast<std::size_t>(text_.size()));
        }
    }
    ~TextInMemory() override {
        const auto size = static_cast<std::size_t>(text_.size());
        text_.clear(); // so that the last one too can go back
        if (memory_) {
            memory_->subtract(size);
        }
    }
    TextInMemory(const TextInMemory&) = delete;
    TextInMemory& operator=(const TextInMemory&) = delete;

    [[nodiscard]] QByteArray bytes() const override { return text_; }

private:
    QByteArray text_;
    std::shared_ptr<OutgoingMemory> memory_;
};

class TextInFile final : public OutgoingText {
public:
    TextInFile(std::shared_ptr<QTemporaryFile> file, qint64 offset, qint64 size)
        : file_(std::move(file)), offset_(offset), size_(size) {}

    [[nodiscard]] QByteArray bytes() const override {
        auto text = file_->seek(offset_) ? file_->read(size_) : QByteArray();
        return text.size() == size_ ? text : QByteArray(); // a part of it would be taken for the whole
    }

private:
    std::shared_ptr<QTemporaryFile> file_;
    qint64 offset_;
    qint64 size_;
};

/// A file on the disk, not in a temporary folder that may be memory itself.
std::shared_ptr<QTemporaryFile> openTemporaryFile() {
    const auto folder = QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation);
    QDir().mkpath(folder);
    auto file = std::make_shared<QTemporaryFile>(folder + QStringLiteral("/brenvale-XXXXXX"));
    // Unlinked at once, if the system did not make it without a name anyway: a crash leaves nothing behind.
    if (!file->open() || (!file->fileName().isEmpty() && !QFile::remove(file->fileName()))) {
        return {};
    }
    return file;
}

} // namespace

void OutgoingMemory::add(std::size_t bytes) {
    use_ += bytes;
    peak_ = std::max(peak_, use_);
}

void OutgoingMemory::subtract(std::size_t bytes) {
    use_ -= bytes;
    // The C library would keep all of it for this thread: one small block that was allocated late is enough.
    if (use_ == 0 && std::exchange(peak_, 0) > keptMemory) {
        ::malloc_trim(0);
    }
}

std::shared_ptr<const OutgoingText> makeOutgoingText(QByteArray text) {
    return std::make_shared<TextInMemory>(std::move(text), nullptr);
}

std::shared_ptr<const OutgoingText> OutgoingSpool::add(QByteArray text) {
    if (memory_->use() + static_cast<std::size_t>(text.size()) > memoryLimit_) {
        if (auto waiting = addToFile(text)) {
            return waiting;
        }
    }
    return std::make_shared<TextInMemory>(std::move(text), memory_);
}

std::shared_ptr<const OutgoingText> OutgoingSpool::addToFile(const QByteArray& text) {
    auto file = file_.lock();
    if (!file) {
        file = openTemporaryFile();
        file_ = file;
    }
    if (!file) {
        return {};
    }
    const auto offset = file->size();
    if (!file->seek(offset) || file->write(text) != text.size() || !file->flush()) {
        file->resize(offset);
        return {};
    }
    return std::make_shared<TextInFile>(std::move(file), offset, text.size());
}

} // namespace brenvale
