#include "platform/linux/XdgDownloads.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace brenvale {

namespace {

/// Whether the user's choice of folders (xdg-user-dirs) can be read without waiting: a FIFO in its place
/// would hold up who opens it.
bool isReadable() {
    const QFileInfo choice(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
                           QStringLiteral("/user-dirs.dirs"));
    return !choice.exists() || choice.isFile();
}

} // namespace

QString XdgDownloads::folder() const {
    auto path = isReadable() ? QStandardPaths::writableLocation(QStandardPaths::DownloadLocation)
                             : QDir::homePath() + QStringLiteral("/Downloads");
    QDir().mkpath(path);
    return path;
}

} // namespace brenvale
