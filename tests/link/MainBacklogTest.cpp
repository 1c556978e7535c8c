#include "link/MainBacklog.h"

#include <gtest/gtest.h>

using brenvale::MainBacklog;

namespace {

constexpr std::size_t mebibyte = std::size_t{1} << 20;

void post(MainBacklog& backlog, int messages, std::size_t bytes = 0) {
    for (int i = 0; i < messages; ++i) {
        backlog.posted(bytes);
    }
}

} // namespace

TEST(MainBacklog, IsFullAtAThousandMessagesOrSo) {
    MainBacklog backlog;
    post(backlog, 1023);
    EXPECT_FALSE(backlog.isFull());
    post(backlog, 1);
    EXPECT_TRUE(backlog.isFull());
}

TEST(MainBacklog, IsFullAt32MebibytesWhateverTheNumber) {
    MainBacklog backlog;
    post(backlog, 31, mebibyte);
    EXPECT_FALSE(backlog.isFull());
    post(backlog, 1, mebibyte);
    EXPECT_TRUE(backlog.isFull());
    MainBacklog one;
    post(one, 1, 128 * mebibyte);
    EXPECT_TRUE(one.isFull());
}

TEST(MainBacklog, AMarkIsSentBehindAQuarterAndOneAtATime) {
    MainBacklog backlog;
    post(backlog, 255);
    EXPECT_FALSE(backlog.takeMark());
    post(backlog, 1);
    EXPECT_TRUE(backlog.takeMark());
    EXPECT_FALSE(backlog.takeMark());
    post(backlog, 500);
    EXPECT_FALSE(backlog.takeMark()) << "the first is still on its way";
}

TEST(MainBacklog, WhereItIsFullAMarkIsOnItsWay) {
    for (const auto bytes : {std::size_t{0}, mebibyte, 128 * mebibyte}) {
        MainBacklog backlog;
        bool isMarked = false;
        while (!backlog.isFull()) {
            backlog.posted(bytes);
            isMarked = backlog.takeMark() || isMarked;
        }
        EXPECT_TRUE(isMarked) << bytes << ": or it would wait for ever";
    }
}

TEST(MainBacklog, AMarkThatRanTellsOfWhatWasBeforeItAlone) {
    MainBacklog backlog;
    post(backlog, 256, 1);
    ASSERT_TRUE(backlog.takeMark());
    post(backlog, 1023, 1);
    EXPECT_TRUE(backlog.isFull());
    backlog.markRan();
    EXPECT_FALSE(backlog.isFull());
    post(backlog, 1);
    EXPECT_TRUE(backlog.isFull()) << "1023 were behind the mark";
    EXPECT_TRUE(backlog.takeMark()) << "and are marked in turn";
    backlog.markRan();
    EXPECT_FALSE(backlog.isFull());
    EXPECT_FALSE(backlog.takeMark());
}

TEST(MainBacklog, RemembersWhetherTheConnectionWaits) {
    MainBacklog backlog;
    EXPECT_FALSE(backlog.setWaiting(false));
    EXPECT_FALSE(backlog.setWaiting(true));
    EXPECT_TRUE(backlog.setWaiting(false));
    EXPECT_FALSE(backlog.setWaiting(false));
}
