#include "platform/linux/XdgDownloads.h"

#include <QDir>
#include <QStandardPaths>

namespace brenvale {

QString XdgDownloads::folder() const {
    auto path = QStandardPaths::writableLocation(QStandardPaths::DownloadLocation);
    QDir().mkpath(path);
    return path;
}

} // namespace brenvale
