#include "ReceivedFiles.h"

#include <QByteArray>
#include <QDir>
#include <QSaveFile>

#include <utility>

namespace brenvale::phone {

std::optional<QString> storedFileName(const QString& fileName) {
    QString last = fileName.section(QLatin1Char('/'), -1).section(QLatin1Char('\\'), -1);
    if (last.isEmpty() || last == QLatin1String(".") || last == QLatin1String("..") ||
        last.contains(QChar(QChar::Null))) {
        return std::nullopt;
    }
    return last;
}

ReceivedFiles::ReceivedFiles(QString folder) : folder_(std::move(folder)) {}
ReceivedFiles::~ReceivedFiles() = default;

std::optional<QString> ReceivedFiles::take(const QJsonObject& message) {
    const QString action = message.value(QLatin1String("action")).toString();
    const QString fileName = message.value(QLatin1String("fileName")).toString();
    if (action == QLatin1String("file_transfer_start")) {
        return start(fileName, message.value(QLatin1String("fileSize")).toInteger());
    }
    if (action == QLatin1String("file_chunk")) {
        return append(fileName, message);
    }
    return std::nullopt;
}

std::optional<QString> ReceivedFiles::start(const QString& fileName, qint64 size) {
    if (const auto failure = openFile(fileName)) {
        return failure;
    }
    // The desktop sends no chunk of an empty file.
    return size == 0 ? std::optional(finish(fileName)) : std::nullopt;
}

std::optional<QString> ReceivedFiles::append(const QString& fileName, const QJsonObject& message) {
    // The start of a file with a quotation mark in its name does not arrive as JSON, but its chunks do.
    if (!files_.contains(fileName)) {
        if (const auto failure = openFile(fileName)) {
            return failure;
        }
    }
    const auto data =
        QByteArray::fromBase64Encoding(message.value(QLatin1String("fileData")).toString().toLatin1(),
                                       QByteArray::AbortOnBase64DecodingErrors);
    if (!data || files_.at(fileName)->write(data.decoded) != data.decoded.size()) {
        return giveUp(fileName);
    }
    return message.value(QLatin1String("isLast")).toBool() ? std::optional(finish(fileName)) : std::nullopt;
}

std::optional<QString> ReceivedFiles::openFile(const QString& fileName) {
    const auto name = storedFileName(fileName);
    if (!name) {
        return QStringLiteral("refused a file named \"%1\"").arg(fileName);
    }
    auto file = std::make_unique<QSaveFile>(QDir(folder_).filePath(*name));
    if (!file->open(QIODevice::WriteOnly)) {
        return QStringLiteral("could not store \"%1\": %2").arg(*name, file->errorString());
    }
    files_[fileName] = std::move(file);
    return std::nullopt;
}

QString ReceivedFiles::finish(const QString& fileName) {
    const auto file = std::move(files_.extract(fileName).mapped());
    const qint64 size = file->pos();
    if (!file->commit()) {
        return QStringLiteral("could not store \"%1\": %2").arg(file->fileName(), file->errorString());
    }
    return QStringLiteral("stored %1, %2 bytes").arg(file->fileName(), QString::number(size));
}

QString ReceivedFiles::giveUp(const QString& fileName) {
    const auto file = std::move(files_.extract(fileName).mapped());
    file->cancelWriting();
    return QStringLiteral("could not store \"%1\": a piece of it is broken or does not fit").arg(fileName);
}

} // namespace brenvale::phone
