#pragma once

#include "records/RecordId.h"

#include <QDateTime>
#include <QString>

namespace brenvale {

/// One entry of the clipboard history. Its identity is made here, never given.
struct ClipboardRecord {
    ClipboardRecord(QString clipboardText, QDateTime added)
        : text(std::move(clipboardText)), date(std::move(added)) {}

    QUuid id = makeRecordId();
    QString text;
    QDateTime date; ///< when it was added
};

} // namespace brenvale
