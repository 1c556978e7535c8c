#include "ClientFrames.h"
#include "Printing.h"

#include <gtest/gtest.h>

namespace brenvale::phone {
namespace {

constexpr FrameMask noMask{};

QByteArray hex(const char* digits) {
    return QByteArray::fromHex(digits);
}

TEST(ClientFrames, ShortTextHasItsLengthInTheSecondByte) {
    EXPECT_EQ(clientFrame(FrameType::Text, "Hi", true, noMask), hex("8182 00000000 4869"));
}

TEST(ClientFrames, PayloadIsMixedWithTheMaskOverAndOver) {
    // The example of a masked "Hello" in the protocol's own document.
    EXPECT_EQ(clientFrame(FrameType::Text, "Hello", true, {'\x37', '\xfa', '\x21', '\x3d'}),
              hex("8185 37fa213d 7f9f4d5158"));
}

TEST(ClientFrames, LongestShortLengthIs125) {
    const QByteArray frame = clientFrame(FrameType::Text, QByteArray(125, 'a'), true, noMask);
    EXPECT_EQ(frame.first(6), hex("81fd 00000000"));
    EXPECT_EQ(frame.size(), 6 + 125);
}

TEST(ClientFrames, LengthsFrom126To65535TakeTwoBytes) {
    EXPECT_EQ(clientFrame(FrameType::Text, QByteArray(126, 'a'), true, noMask).first(8),
              hex("81fe 007e 00000000"));
    const QByteArray frame = clientFrame(FrameType::Text, QByteArray(65535, 'a'), true, noMask);
    EXPECT_EQ(frame.first(8), hex("81fe ffff 00000000"));
    EXPECT_EQ(frame.size(), 8 + 65535);
}

TEST(ClientFrames, LongerLengthsTakeEightBytes) {
    const QByteArray frame = clientFrame(FrameType::Binary, QByteArray(65536, 'a'), true, noMask);
    EXPECT_EQ(frame.first(14), hex("82ff 0000000000010000 00000000"));
    EXPECT_EQ(frame.size(), 14 + 65536);
}

TEST(ClientFrames, EmptyPayloadIsAHeaderAlone) {
    EXPECT_EQ(clientFrame(FrameType::Ping, {}, true, noMask), hex("8980 00000000"));
}

TEST(ClientFrames, SeveralMessagesFollowEachOther) {
    EXPECT_EQ(textFrames({"a", "", "bc"}), clientFrame(FrameType::Text, "a") +
                                               clientFrame(FrameType::Text, "") +
                                               clientFrame(FrameType::Text, "bc"));
}

TEST(ClientFrames, FragmentsContinueTheFirstAndOnlyTheLastIsFinal) {
    EXPECT_EQ(fragmentedTextFrames("abcde", 2), clientFrame(FrameType::Text, "ab", false) +
                                                    clientFrame(FrameType::Continuation, "cd", false) +
                                                    clientFrame(FrameType::Continuation, "e", true));
}

TEST(ClientFrames, MessageThatFitsOneFragmentIsOneFrame) {
    EXPECT_EQ(fragmentedTextFrames("ab", 2), clientFrame(FrameType::Text, "ab"));
    EXPECT_EQ(fragmentedTextFrames("", 2), clientFrame(FrameType::Text, ""));
}

} // namespace
} // namespace brenvale::phone
