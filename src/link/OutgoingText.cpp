#include "link/OutgoingText.h"

#include <QDir>
#include <QStandardPaths>

#include <utility>

namespace brenvale {

namespace {

class TextInMemory final : public OutgoingText {
public:
    /// `memoryUse` may be null; else it counts this text for as long as it lives.
    TextInMemory(QByteArray text, std::shared_ptr<std::size_t> memoryUse)
        : text_(std::move(text)), memoryUse_(std::move(memoryUse)) {
        if (memoryUse_) {
            *memoryUse_ += static_cast<std::size_t>(text_.size());
        }
    }
    ~TextInMemory() override {
        if (memoryUse_) {
            *memoryUse_ -= static_cast<std::size_t>(text_.size());
        }
    }
    TextInMemory(const TextInMemory&) = delete;
    TextInMemory& operator=(const TextInMemory&) = delete;

    [[nodiscard]] QByteArray bytes() const override { return text_; }

private:
    QByteArray text_;
    std::shared_ptr<std::size_t> memoryUse_;
};

class TextInFile final : public OutgoingText {
public:
    TextInFile(std::shared_ptr<QTemporaryFile> file, qint64 offset, qint64 size)
        : file_(std::move(file)), offset_(offset), size_(size) {}

    [[nodiscard]] QByteArray bytes() const override {
        return file_->seek(offset_) ? file_->read(size_) : QByteArray();
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

std::shared_ptr<const OutgoingText> makeOutgoingText(QByteArray text) {
    return std::make_shared<TextInMemory>(std::move(text), nullptr);
}

std::shared_ptr<const OutgoingText> OutgoingSpool::add(QByteArray text) {
    if (*memoryUse_ + static_cast<std::size_t>(text.size()) > memoryLimit_) {
        if (auto waiting = addToFile(text)) {
            return waiting;
        }
    }
    return std::make_shared<TextInMemory>(std::move(text), memoryUse_);
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
