#include "records/Instant.h"

#include <QLocale>

#include <gtest/gtest.h>

#include <cmath>

using namespace brenvale;

namespace {

QString inLocale(const char* name) {
    const QLocale before;
    QLocale::setDefault(QLocale(QString::fromUtf8(name)));
    auto text = abbreviatedDateAndTime(QDateTime(QDate(2026, 3, 5), QTime(9, 41)));
    QLocale::setDefault(before);
    return text.replace(QChar(0x202f), u' ');
}

} // namespace

TEST(Instant, CountsMilliseconds) {
    EXPECT_EQ(instantOf(1'700'000'000'250.9).toMSecsSinceEpoch(), 1'700'000'000'250);
}

TEST(Instant, OfAnyNumberIsOneThatACalendarHolds) {
    for (const double milliseconds : {1e308, -1e308, std::nan(""), HUGE_VAL}) {
        EXPECT_TRUE(instantOf(milliseconds).date().isValid()) << milliseconds;
    }
}

TEST(AbbreviatedDateAndTime, HasAShortMonthAndNoWeekday) {
    EXPECT_EQ(inLocale("en_US"), QStringLiteral("Mar 5, 2026, 9:41 AM"));
    EXPECT_EQ(inLocale("en_GB"), QStringLiteral("5 Mar 2026, 09:41"));
    EXPECT_EQ(inLocale("de_DE"), QStringLiteral("5. März 2026, 09:41"));
    EXPECT_EQ(inLocale("ja_JP"), QStringLiteral("2026年3月5日, 9:41"));
    EXPECT_EQ(inLocale("hu_HU"), QStringLiteral("2026. márc. 5., 9:41"));
}
