#include "messages/MessageDates.h"

#include "records/Instant.h"

#include <QLocale>

namespace brenvale {

QString formatDate(double milliseconds) {
    return QLocale().toString(instantOf(milliseconds).time(), QLocale::ShortFormat);
}

QString formatRelativeDate(double milliseconds, const QDateTime& now) {
    const auto day = instantOf(milliseconds).date();
    if (day == now.date()) {
        return formatDate(milliseconds);
    }
    if (day == now.date().addDays(-1)) {
        return QStringLiteral("Yesterday");
    }
    return QLocale().toString(day, QLocale::ShortFormat);
}

} // namespace brenvale
