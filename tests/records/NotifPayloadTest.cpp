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

struct ShownTime {
    QDate date;
    QString text;
};

/// How a noon that many days from today is shown, all on one and the same today.
ShownTime textAtNoon(int days) {
    while (true) {
        const auto today = QDate::currentDate();
        const auto date = today.addDays(days);
        const auto noon = QDateTime(date, QTime(12, 34));
        const auto text = at(static_cast<double>(noon.toSecsSinceEpoch())).formattedTime();
        if (QDate::currentDate() == today) {
            return {.date = date, .text = text};
        }
    }
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
    EXPECT_EQ(textAtNoon(0).text, QLocale().toString(QTime(12, 34), QLocale::ShortFormat));
}

TEST(NotifPayloadFormattedTime, HasTheDateOnAnyOtherDay) {
    for (const int days : {-1, 1, -400}) {
        const auto [date, text] = textAtNoon(days);
        EXPECT_TRUE(text.contains(QLocale().toString(date, QLocale::ShortFormat))) << text.toStdString();
        EXPECT_TRUE(text.contains(QLocale().toString(QTime(12, 34), QLocale::ShortFormat)))
            << text.toStdString();
    }
}
