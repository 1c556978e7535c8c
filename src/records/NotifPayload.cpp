#include "records/NotifPayload.h"

#include <QLocale>

#include <algorithm>
#include <cmath>

namespace brenvale {

QDateTime NotifPayload::date() const {
    // A phone may send any number; what no calendar holds becomes the nearest instant that one does.
    constexpr double latest = 8.64e15;
    const double milliseconds = std::isfinite(time) ? std::clamp(time * 1000, -latest, latest) : 0;
    return QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(milliseconds));
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
