#pragma once

#include <QByteArray>
#include <QUrl>

#include <optional>

namespace brenvale {

/// `url` in the form that names no host, where it names a file of this computer: one without a host or with
/// "localhost" (RFC 8089). Nothing for the file of another computer and for what is no file. Pure.
[[nodiscard]] std::optional<QUrl> localFileUrl(const QUrl& url);

/// The path of a local file, byte for byte: a name need not be a text. Pure.
[[nodiscard]] QByteArray localPath(const QUrl& url);

/// The name of a file or folder, also where a folder's URL ends in slashes. Pure.
[[nodiscard]] QString lastPathComponent(const QUrl& url);

} // namespace brenvale
