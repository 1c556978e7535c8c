#include "messages/MessageDates.h"

#include <QLocale>

#include <gtest/gtest.h>

#include <cmath>

using namespace brenvale;

namespace {

const QDateTime thatAfternoon(QDate(2026, 3, 15), QTime(13, 30));

double millisecondsAt(const QDate& day, const QTime& time) {
    return static_cast<double>(QDateTime(day, time).toMSecsSinceEpoch());
}

QString shortTime(int hour, int minute) {
    return QLocale().toString(QTime(hour, minute), QLocale::ShortFormat);
}

} // namespace

TEST(FormatDate, IsTheClockTimeWhateverTheDay) {
    EXPECT_EQ(formatDate(millisecondsAt(QDate(2026, 3, 15), QTime(9, 41))), shortTime(9, 41));
    EXPECT_EQ(formatDate(millisecondsAt(QDate(1999, 1, 1), QTime(23, 59))), shortTime(23, 59));
}

TEST(FormatRelativeDate, IsTheClockTimeToday) {
    EXPECT_EQ(formatRelativeDate(millisecondsAt(thatAfternoon.date(), QTime(0, 1)), thatAfternoon),
              shortTime(0, 1));
    EXPECT_EQ(formatRelativeDate(millisecondsAt(thatAfternoon.date(), QTime(23, 59)), thatAfternoon),
              shortTime(23, 59));
}

TEST(FormatRelativeDate, IsAWordYesterday) {
    for (const auto time : {QTime(0, 0), QTime(23, 59)}) {
        EXPECT_EQ(formatRelativeDate(millisecondsAt(thatAfternoon.date().addDays(-1), time), thatAfternoon),
                  QStringLiteral("Yesterday"));
    }
}

TEST(FormatRelativeDate, IsTheShortDateOnAnyOtherDay) {
    for (const int days : {-2, -400, 1}) {
        const auto day = thatAfternoon.date().addDays(days);
        EXPECT_EQ(formatRelativeDate(millisecondsAt(day, QTime(12, 0)), thatAfternoon),
                  QLocale().toString(day, QLocale::ShortFormat))
            << days;
    }
}

TEST(FormatRelativeDate, SecondsAreReadAsMilliseconds) {
    EXPECT_EQ(formatRelativeDate(1'700'000'000, thatAfternoon),
              QLocale().toString(QDate(1970, 1, 20), QLocale::ShortFormat));
}

TEST(FormatRelativeDate, TakesAnyNumber) {
    for (const double date : {1e308, -1e308, std::nan("")}) {
        EXPECT_FALSE(formatRelativeDate(date, thatAfternoon).isEmpty());
    }
}
