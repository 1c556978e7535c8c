#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

#include <expected>
#include <memory>

namespace brenvale {

/// What a transfer needs of the disk. Only a regular file will do, by whatever links it is reached: what
/// stands in its place (a folder, a named pipe, a device, a socket) could keep the link waiting for ever, and
/// is neither waited for nor written to. No program that this one starts inherits an open file. The errors
/// are the system's or as plain as those. Any thread.

/// Whether something else than a file stands there: to be asked before a library opens a path by itself.
[[nodiscard]] bool isNoFile(const QString& path);

/// The file of that path, open for reading; by the bytes of its name where that need not be a text.
[[nodiscard]] std::expected<std::unique_ptr<QFile>, QString> openFile(const QString& path);
[[nodiscard]] std::expected<std::unique_ptr<QFile>, QString> openFile(const QByteArray& name);

/// The file of that path, made where it is missing, emptied and open for writing.
[[nodiscard]] std::expected<std::unique_ptr<QFile>, QString> createFile(const QString& path);

} // namespace brenvale
