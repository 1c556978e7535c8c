#include "platform/linux/XdgDownloads.h"

#include "transfer/LocalFile.h"

#include <QDir>
#include <QStandardPaths>

namespace brenvale {

QString XdgDownloads::folder() const {
    // A FIFO in the place of the user's choice of folders (xdg-user-dirs) would hold up who opens it.
    const auto choice = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
                        QStringLiteral("/user-dirs.dirs");
    auto path = isNoFile(choice) ? QDir::homePath() + QStringLiteral("/Downloads")
                                 : QStandardPaths::writableLocation(QStandardPaths::DownloadLocation);
    QDir().mkpath(path);
    return path;
}

} // namespace brenvale
