#pragma once

#include <QDateTime>
#include <QString>
#include <QUrl>
#include <QUuid>

#include <optional>

namespace brenvale {

/// One row of the transfer list, in either direction.
struct FileTransferRecord {
    QUuid id;                ///< given by the creator, who addresses later updates by it
    QString fileName;        ///< last path component, as shown
    std::optional<QUrl> url; ///< the local file, once it is known
    qint64 fileSize = 0;     ///< bytes
    QDateTime date;          ///< when the transfer began
    bool isOutgoing = false; ///< the desktop is the sender
    double progress = 0;     ///< fraction done, 0 to 1
    bool isCompleted = false;
};

} // namespace brenvale
