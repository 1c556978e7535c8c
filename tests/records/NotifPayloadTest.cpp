#include "records/NotifPayload.h"

#include <QLocale>
#include <QTimeZone>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using brenvale::NotifPayload;

namespace {

NotifPayload at(double time) {
    return {.id = QUuid::createUuid(), .time = time};
}

} // namespace

TEST(NotifPayloadTime, CountsSecondsUnscaled) {
    EXPECT_EQ(at(1'700'000'000.25).date().toMSecsSinceEpoch(), 1'700'000'000'250);
    EXPECT_GT(at(1'700'000'000'000).date().date().year(), 50'000) << "milliseconds are not corrected";
}

TEST(NotifPayloadTime, TakesAnyNumber) {
    for (const double time : {1e308, -1e308, std::nan(""), std::numeric_limits<double>::infinity()}) {
        EXPECT_TRUE(at(time).date().isValid()) << time;
        EXPECT_FALSE(at(time).formattedTime().isEmpty()) << time;
    }
}

TEST(NotifPayloadFormattedTime, IsTheTimeAloneToday) {
    const auto noon = QDateTime(QDate::currentDate(), QTime(12, 34));
    EXPECT_EQ(at(static_cast<double>(noon.toSecsSinceEpoch())).formattedTime(),
              QLocale().toString(QTime(12, 34), QLocale::ShortFormat));
}

TEST(NotifPayloadFormattedTime, HasTheDateOnAnyOtherDay) {
    for (const int days : {-1, 1, -400}) {
        const auto date = QDate::currentDate().addDays(days);
        const auto text =
            at(static_cast<double>(QDateTime(date, QTime(12, 34)).toSecsSinceEpoch())).formattedTime();
        EXPECT_TRUE(text.contains(QLocale().toString(date, QLocale::ShortFormat))) << text.toStdString();
        EXPECT_TRUE(text.contains(QLocale().toString(QTime(12, 34), QLocale::ShortFormat)))
            << text.toStdString();
    }
}
