#pragma once

#include "records/SmsRecord.h"

#include <QString>

namespace brenvale {

/// A message of a log: `date` in milliseconds, `type` 1 for one that came and 2 for one that was sent.
inline SmsRecord sms(const char* address, double date, const char* body = "", qint64 type = 1) {
    return {
        .address = QString::fromUtf8(address), .body = QString::fromUtf8(body), .date = date, .type = type};
}

/// A message with a name, as some phones give it.
inline SmsRecord sms(const char* address, double date, const char* body, const QString& name) {
    auto record = sms(address, date, body);
    record.name = name;
    return record;
}

} // namespace brenvale
