#include "link/MessageBuffer.h"

#include <gtest/gtest.h>

#include <string>

using namespace brenvale;

TEST(MessageBuffer, KeepsItsContentsWhileItGrows) {
    MessageBuffer buffer;
    std::string expected;
    for (int i = 0; i < 1000; ++i) {
        buffer.append(std::to_string(i));
        expected += std::to_string(i);
    }
    EXPECT_EQ(buffer.text(), expected);
}

TEST(MessageBuffer, ReadsBytesThatWereCommitted) {
    MessageBuffer buffer;
    std::memcpy(buffer.prepare(5).data(), "hello", 5);
    buffer.commit(3);
    EXPECT_EQ(buffer.text(), "hel");
    buffer.consume(1);
    EXPECT_EQ(buffer.text(), "el");
    buffer.consume(99);
    EXPECT_TRUE(buffer.empty());
}

TEST(MessageBuffer, GrowsOnceToTheSizeAskedFor) {
    MessageBuffer buffer;
    (void)buffer.prepare(1'000'000);
    EXPECT_EQ(buffer.capacity(), 1'000'000U);
}

TEST(MessageBuffer, EmptiesWhenMovedFrom) {
    MessageBuffer buffer("text");
    const auto taken = std::exchange(buffer, {});
    EXPECT_EQ(taken.text(), "text");
    EXPECT_TRUE(buffer.empty());
    buffer.append("again");
    EXPECT_EQ(buffer.text(), "again");
}
