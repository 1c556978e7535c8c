#pragma once

#include <QDateTime>
#include <QString>
#include <QUuid>

namespace brenvale {

/// One entry of the clipboard history. Its identity is made here, never given.
struct ClipboardRecord {
    ClipboardRecord(QString clipboardText, QDateTime added)
        : text(std::move(clipboardText)), date(std::move(added)) {}

    QUuid id = QUuid::createUuid();
    QString text;
    QDateTime date; ///< when it was added
};

} // namespace brenvale
