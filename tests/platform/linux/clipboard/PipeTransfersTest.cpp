#include "platform/linux/clipboard/PipeTransfers.h"

#include "fakes/EventLoop.h"

#include <gmock/gmock.h>

#include <array>
#include <csignal>

#include <fcntl.h>
#include <unistd.h>

using namespace brenvale;

namespace {

struct PipeTransfers : testing::Test, EventLoop {
    PipeTransfers() { EXPECT_EQ(::pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK), 0); }

    std::array<int, 2> ends{};
};

} // namespace

TEST_F(PipeTransfers, WhatIsWrittenIsReadWhole) {
    const QByteArray text(5'000'000, 'x'); // many times what a pipe holds
    std::optional<QByteArray> read;
    bool isWritten = false;
    const PipeReader reader(ends[0], [&read](std::optional<QByteArray> bytes) { read = std::move(bytes); });
    auto writer = std::make_unique<PipeWriter>(ends[1], text, [&isWritten] { isWritten = true; });
    turnUntil([&isWritten] { return isWritten; });
    EXPECT_FALSE(read); // the end of the pipe is what says that it is whole
    writer.reset();
    turnUntil([&read] { return read.has_value(); });
    EXPECT_EQ(read, text);
}

TEST_F(PipeTransfers, NothingIsReadFromAPipeThatIsClosedAtOnce) {
    ::close(ends[1]);
    std::optional<QByteArray> read;
    const PipeReader reader(ends[0], [&read](std::optional<QByteArray> bytes) { read = std::move(bytes); });
    turnUntil([&read] { return read.has_value(); });
    EXPECT_EQ(read, QByteArray());
}

TEST_F(PipeTransfers, AnEmptyTextIsWritten) {
    bool isWritten = false;
    const PipeWriter writer(ends[1], {}, [&isWritten] { isWritten = true; });
    turnUntil([&isWritten] { return isWritten; });
    ::close(ends[0]);
}

TEST_F(PipeTransfers, AReaderThatGoesAwayEndsTheWriting) {
    ::signal(SIGPIPE, SIG_IGN); // as the program does
    bool isGivenUp = false;
    const PipeWriter writer(ends[1], QByteArray(5'000'000, 'x'), [&isGivenUp] { isGivenUp = true; });
    std::array<char, 100> some{};
    turnUntil([this, &some] { return ::read(ends[0], some.data(), some.size()) > 0; });
    ::close(ends[0]);
    turnUntil([&isGivenUp] { return isGivenUp; });
}
