#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

#include <expected>
#include <memory>
#include <optional>

namespace brenvale::phone {

inline constexpr qint64 fileChunkSize = 1'048'576;

/// How the slashes of a message are written.
enum class SlashStyle : quint8 { Plain, Escaped };

/// A file as the messages that carry it to the desktop: its start, then a chunk after the other, of which one
/// is in memory at a time. One thread at a time. The error is a text for people.
class FileChunks {
public:
    static std::expected<FileChunks, QString> open(const QString& path,
                                                   SlashStyle slashes = SlashStyle::Plain);

    /// The next message; nothing after the last one. A file that ends early ends with the chunk that it has.
    std::optional<QByteArray> next();

    [[nodiscard]] const QString& fileName() const { return fileName_; }
    [[nodiscard]] qint64 size() const { return size_; }

private:
    FileChunks(std::unique_ptr<QFile> file, QString fileName, SlashStyle slashes);

    QByteArray nextChunk();

    std::unique_ptr<QFile> file_;
    QString fileName_;
    qint64 size_;
    SlashStyle slashes_;
    qint64 offset_ = 0;
    bool isStarted_ = false;
    bool isFinished_ = false;
};

} // namespace brenvale::phone
