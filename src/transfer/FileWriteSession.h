#pragma once

#include <QFile>
#include <QUrl>

#include <memory>

namespace brenvale {

/// One incoming file that is open.
struct FileWriteSession {
    std::unique_ptr<QFile> handle;
    QUrl url;
    qint64 totalSize = 0; ///< bytes, as the phone announced
};

} // namespace brenvale
