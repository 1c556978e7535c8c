#include "records/RecordId.h"

#include <QSet>

#include <gtest/gtest.h>

using brenvale::makeRecordId;

TEST(RecordId, IsARandomUuid) {
    const auto id = makeRecordId();
    EXPECT_EQ(id.variant(), QUuid::DCE);
    EXPECT_EQ(id.version(), QUuid::Random);
}

TEST(RecordId, IsAnotherOneEachTime) {
    QSet<QUuid> ids;
    for (int i = 0; i < 10'000; ++i) {
        ids.insert(makeRecordId());
    }
    EXPECT_EQ(ids.size(), 10'000);
}
