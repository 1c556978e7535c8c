#include "records/Instant.h"

#include <QLocale>
#include <QRegularExpression>

#include <algorithm>
#include <cmath>

namespace brenvale {

namespace {

/// Locales have no format of this length. Theirs of full length is it, with the weekday and half the month
/// left out.
QString abbreviatedDateFormat(const QLocale& locale) {
    static const QRegularExpression weekday(QStringLiteral("^dddd[\\s,،]*|[\\s,،]*dddd"));
    return locale.dateFormat(QLocale::LongFormat)
        .remove(weekday)
        .replace(QStringLiteral("MMMM"), QStringLiteral("MMM"));
}

} // namespace

QDateTime instantOf(double milliseconds) {
    constexpr double latest = 8.64e15;
    const double nearest = std::isfinite(milliseconds) ? std::clamp(milliseconds, -latest, latest) : 0;
    return QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(nearest));
}

QString abbreviatedDateAndTime(const QDateTime& instant) {
    const QLocale locale;
    return locale.toString(instant.date(), abbreviatedDateFormat(locale)) + QStringLiteral(", ") +
           locale.toString(instant.time(), QLocale::ShortFormat);
}

} // namespace brenvale
