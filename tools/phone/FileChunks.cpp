#include "FileChunks.h"

#include "PhoneMessages.h"

#include <QFileInfo>

#include <utility>

namespace brenvale::phone {

std::expected<FileChunks, QString> FileChunks::open(const QString& path, SlashStyle slashes) {
    const QFileInfo info(path);
    if (info.isDir()) {
        return std::unexpected(QStringLiteral("%1: is a folder").arg(path));
    }
    auto file = std::make_unique<QFile>(path);
    if (!file->open(QIODevice::ReadOnly)) {
        return std::unexpected(QStringLiteral("%1: %2").arg(path, file->errorString()));
    }
    return FileChunks(std::move(file), info.fileName(), slashes);
}

FileChunks::FileChunks(std::unique_ptr<QFile> file, QString fileName, SlashStyle slashes)
    : file_(std::move(file)), fileName_(std::move(fileName)), size_(file_->size()), slashes_(slashes) {}

std::optional<QByteArray> FileChunks::next() {
    if (isFinished_) {
        return std::nullopt;
    }
    QByteArray message = isStarted_ ? nextChunk() : fileStartMessage(fileName_, size_);
    isStarted_ = true;
    return slashes_ == SlashStyle::Escaped ? withEscapedSlashes(std::move(message)) : message;
}

// An empty file has one empty chunk as well: without a last chunk the desktop would wait for ever.
QByteArray FileChunks::nextChunk() {
    const QByteArray data = file_->read(fileChunkSize);
    offset_ += data.size();
    isFinished_ = data.isEmpty() || offset_ >= size_;
    return fileChunkMessage(fileName_, data, isFinished_);
}

} // namespace brenvale::phone
