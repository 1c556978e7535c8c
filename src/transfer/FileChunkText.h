#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

namespace brenvale {

/// The messages in which a file goes to the phone (UTF-8). Pure.

/// Announces a file of `fileSize` bytes. A template: the name goes in as it is, unescaped.
[[nodiscard]] QByteArray fileTransferStartText(const QString& fileName, qint64 fileSize);

/// One piece of the file. A written JSON message whose text is built in place, for it is large.
[[nodiscard]] QByteArray fileChunkText(const QString& fileName, QByteArrayView bytes, bool isLast);

} // namespace brenvale
