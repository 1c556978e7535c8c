#include "transfer/TransferText.h"
#include "records/FileTransferRecord.h"

#include <QLocale>

#include <gtest/gtest.h>

#include <cmath>

using namespace brenvale;

TEST(CompletionText, OfAFileThatWentOutSaysSent) {
    EXPECT_TRUE(completionText({.isOutgoing = true}).startsWith(QStringLiteral("Sent • ")));
}

TEST(ProgressText, IsTheWholePercentBelow) {
    EXPECT_EQ(progressText(0), QStringLiteral("0%"));
    EXPECT_EQ(progressText(0.999), QStringLiteral("99%"));
    EXPECT_EQ(progressText(1), QStringLiteral("100%"));
    EXPECT_EQ(progressText(1.5), QStringLiteral("150%"));
}

TEST(ProgressTextDeathTest, WhatIsNoNumberOrTooLargeIsFatal) {
    EXPECT_DEATH(static_cast<void>(progressText(std::nan(""))), "infinite or NaN");
    EXPECT_DEATH(static_cast<void>(progressText(1e18)), "out of range");
}

TEST(ByteCount, HasAsManyDecimalsAsTheUnitDeserves) {
    const QLocale before;
    QLocale::setDefault(QLocale::c());
    const std::vector<std::pair<qint64, const char*>> expected{{0, "Zero KB"},
                                                               {1, "1 byte"},
                                                               {999, "999 bytes"},
                                                               {1000, "1 KB"},
                                                               {1499, "1 KB"},
                                                               {999'499, "999 KB"},
                                                               {999'500, "1 MB"},
                                                               {1'250'000, "1.3 MB"},
                                                               {12'000'000, "12 MB"},
                                                               {1'234'567'890, "1.23 GB"},
                                                               {2'000'000'000'000, "2 TB"}};
    for (const auto& [bytes, text] : expected) {
        EXPECT_EQ(byteCountText(bytes).toStdString(), text);
    }
    QLocale::setDefault(before);
}
