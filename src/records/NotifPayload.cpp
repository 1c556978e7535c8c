#include "records/NotifPayload.h"

#include "records/Instant.h"

#include <QLocale>

namespace brenvale {

QDateTime NotifPayload::date() const {
    return instantOf(time * 1000);
}

QString NotifPayload::formattedTime() const {
    const QLocale locale;
    const auto instant = date();
    auto timeText = locale.toString(instant.time(), QLocale::ShortFormat);
    if (instant.date() == QDate::currentDate()) {
        return timeText;
    }
    return locale.toString(instant, QLocale::ShortFormat);
}

} // namespace brenvale
