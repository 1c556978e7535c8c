#include "platform/linux/LineWriter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/socket.h>
#include <unistd.h>

using brenvale::LineWriter;
using testing::ElementsAre;

namespace {

constexpr std::chrono::milliseconds noPatience{0};

/// A writer and the other end of its pipe.
struct LineWriterTest : testing::Test {
    LineWriterTest() { EXPECT_EQ(::pipe2(ends, O_CLOEXEC), 0); }
    ~LineWriterTest() override {
        closeReader();
        ::close(ends[1]);
    }
    LineWriterTest(const LineWriterTest&) = delete;
    LineWriterTest& operator=(const LineWriterTest&) = delete;

    void closeReader() {
        if (ends[0] >= 0) {
            ::close(std::exchange(ends[0], -1));
        }
    }

    /// The lines up to this one, as somebody reads them.
    [[nodiscard]] std::vector<std::string> readTo(const std::string& last) const {
        std::string text;
        char block[4096];
        while (!text.ends_with(last + '\n')) {
            const auto size = ::read(ends[0], block, sizeof block);
            if (size <= 0) {
                ADD_FAILURE() << "the lines ended with " << text;
                return {};
            }
            text.append(block, static_cast<std::size_t>(size));
        }
        std::vector<std::string> lines;
        std::istringstream stream(text);
        for (std::string line; std::getline(stream, line);) {
            lines.push_back(line);
        }
        return lines;
    }

    int ends[2] = {-1, -1};
};

QByteArray numbered(int number) {
    return "line " + QByteArray::number(number).rightJustified(8, '0');
}

} // namespace

TEST_F(LineWriterTest, LinesLeaveInOrder) {
    LineWriter writer(ends[1]);
    writer.line("one");
    writer.line("");
    writer.line("three");
    EXPECT_THAT(readTo("three"), ElementsAre("one", "", "three"));
}

TEST_F(LineWriterTest, ALineIsOutWhenTheCallReturns) {
    ::fcntl(ends[0], F_SETFL, O_NONBLOCK);
    LineWriter writer(ends[1]);
    for (const auto* text : {"one", "two"}) {
        writer.line(text);
        EXPECT_THAT(readTo(text), ElementsAre(text));
    }
}

TEST_F(LineWriterTest, TheDescriptorStaysAsItIsForOthers) {
    const LineWriter writer(ends[1]);
    EXPECT_EQ(::fcntl(ends[1], F_GETFL) & O_NONBLOCK, 0);
}

TEST(LineWriterOfAFile, GoesOnWhereTheFileIs) {
    const int file = ::memfd_create("log", MFD_CLOEXEC);
    ASSERT_EQ(::write(file, "before\n", 7), 7);
    LineWriter(file).line("a line");
    ASSERT_EQ(::write(file, "after\n", 6), 6);
    char text[64]{};
    EXPECT_EQ(::pread(file, text, sizeof text, 0), 20);
    EXPECT_STREQ(text, "before\na line\nafter\n");
    ::close(file);
}

TEST(LineWriterOfASocket, WaitsForItsReaderElsewhere) {
    std::signal(SIGPIPE, SIG_IGN);
    int ends[2]{};
    ASSERT_EQ(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends), 0);
    {
        LineWriter writer(ends[1]);
        for (int i = 0; i < 100'000; ++i) {
            writer.line(numbered(i)); // far more than it takes, and nobody reads
        }
        ::close(ends[0]);
    }
    ::close(ends[1]);
}

TEST_F(LineWriterTest, ALineOfAnySizeStaysWhole) {
    LineWriter writer(ends[1]);
    writer.line(QByteArray(1 << 20, 'x'));
    writer.line("end");
    EXPECT_THAT(readTo("end"), ElementsAre(std::string(1 << 20, 'x'), "end"));
}

TEST_F(LineWriterTest, AReaderThatHasStoppedHoldsUpNobodyAndLosesNothingWithinTheBound) {
    constexpr int count = 20'000; // several times what the pipe takes
    LineWriter writer(ends[1]);
    for (int i = 0; i < count; ++i) {
        writer.line(numbered(i));
    }
    writer.flush(noPatience);
    const auto lines = readTo(numbered(count - 1).toStdString());
    ASSERT_EQ(lines.size(), count);
    for (int i = 0; i < count; ++i) {
        ASSERT_EQ(lines[static_cast<std::size_t>(i)], numbered(i).toStdString());
    }
}

TEST_F(LineWriterTest, TheEndWaitsNoLongerThanTheLimitForAReaderThatIsSlow) {
    std::signal(SIGPIPE, SIG_IGN);
    LineWriter writer(ends[1]);
    writer.line(QByteArray(4 << 20, 'x'));
    std::jthread reader([this](const std::stop_token& stop) {
        char byte = 0;
        while (!stop.stop_requested() && ::read(ends[0], &byte, 1) == 1) {
        }
    });
    writer.flush(std::chrono::hours(1), std::chrono::milliseconds(50)); // or it never comes back
    reader.request_stop();
    reader.join();
    closeReader();
}

TEST_F(LineWriterTest, BeyondTheBoundTheOldestGoAndOneLineSaysHowMany) {
    constexpr int count = 20'000;
    constexpr qsizetype bound = 1400; // a hundred lines
    LineWriter writer(ends[1], bound);
    for (int i = 0; i < count; ++i) {
        writer.line(numbered(i));
    }
    const auto lines = readTo(numbered(count - 1).toStdString());
    int next = 0;
    int gaps = 0;
    for (const auto& line : lines) {
        int leftOut = 0;
        if (std::sscanf(line.c_str(), "[Log] %d lines were not read in time and are left out", &leftOut) ==
            1) {
            next += leftOut;
            ++gaps;
        } else {
            ASSERT_EQ(line, numbered(next).toStdString());
            ++next;
        }
    }
    EXPECT_EQ(next, count);
    EXPECT_GE(gaps, 1);
}

TEST_F(LineWriterTest, ALineBeyondTheBoundStillComes) {
    LineWriter writer(ends[1], 10);
    writer.line(QByteArray(1000, 'x'));
    EXPECT_THAT(readTo(std::string(1000, 'x')), ElementsAre(std::string(1000, 'x')));
}

TEST_F(LineWriterTest, WhatTheReaderTakesLaterIsOutAfterTheFlush) {
    LineWriter writer(ends[1]);
    for (int i = 0; i < 20'000; ++i) {
        writer.line(numbered(i));
    }
    std::vector<std::string> lines;
    std::thread reader([&] { lines = readTo("end"); });
    writer.line("end");
    writer.flush();
    reader.join();
    EXPECT_EQ(lines.size(), 20'001U);
}

TEST_F(LineWriterTest, AReaderThatHasGoneIsNoError) {
    std::signal(SIGPIPE, SIG_IGN);
    LineWriter writer(ends[1]);
    closeReader();
    writer.line("nobody reads this");
    writer.line("nor this");
    writer.flush();
}
