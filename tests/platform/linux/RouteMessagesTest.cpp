#include "platform/linux/RouteMessages.h"

#include <QCoreApplication>
#include <QDeadlineTimer>

#include <array>
#include <chrono>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

using namespace brenvale;

namespace {

/// The test is the kernel at the other end of the socket.
struct RouteMessagesTest : testing::Test {
    RouteMessagesTest() = default;
    ~RouteMessagesTest() override { ::close(ends[1]); }
    RouteMessagesTest(const RouteMessagesTest&) = delete;
    RouteMessagesTest& operator=(const RouteMessagesTest&) = delete;

    void tell(std::size_t size) const {
        const std::array<char, 8192> message{};
        EXPECT_EQ(::send(ends[1], message.data(), size, 0), static_cast<ssize_t>(size));
    }

    /// Turns the event loop until that many changes have been told.
    [[nodiscard]] bool waitForChanges(int count) const {
        const QDeadlineTimer deadline(std::chrono::minutes(1));
        while (changes < count && !deadline.hasExpired()) {
            QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        }
        return changes == count;
    }

    [[nodiscard]] bool hasUnread() const {
        char byte = 0;
        return ::recv(ends[0], &byte, sizeof byte, MSG_PEEK | MSG_DONTWAIT) > 0;
    }

    static std::array<int, 2> socketPair() {
        std::array<int, 2> pair{};
        EXPECT_EQ(::socketpair(AF_UNIX, SOCK_DGRAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0, pair.data()), 0);
        return pair;
    }

    int argumentCount = 1;
    QByteArray programName = "linux-tests";
    char* arguments[1] = {programName.data()};
    QCoreApplication application{argumentCount, arguments};
    std::array<int, 2> ends = socketPair();
    int changes = 0;
    RouteMessages messages{ends[0], [this] {
                               ++changes;
                           }};
};

} // namespace

TEST_F(RouteMessagesTest, NothingIsToldOfANetworkThatStaysAsItIs) {
    QCoreApplication::processEvents();
    EXPECT_EQ(changes, 0);
}

TEST_F(RouteMessagesTest, WhatComesTogetherIsToldOnce) {
    tell(100);
    tell(8192);
    tell(1);
    EXPECT_TRUE(waitForChanges(1));
    EXPECT_FALSE(hasUnread());
    QCoreApplication::processEvents();
    EXPECT_EQ(changes, 1);
    tell(100);
    EXPECT_TRUE(waitForChanges(2));
}

TEST(RouteMessages, TheKernelsSocketClosesInStartedProgramsAndDoesNotBlock) {
    const int socket = RouteMessages::openSocket();
    ASSERT_GE(socket, 0);
    EXPECT_TRUE(::fcntl(socket, F_GETFD) & FD_CLOEXEC);
    EXPECT_TRUE(::fcntl(socket, F_GETFL) & O_NONBLOCK);
    ::close(socket);
}

TEST_F(RouteMessagesTest, WithoutASocketNothingIsTold) {
    const RouteMessages none(-1, [this] { ++changes; });
    QCoreApplication::processEvents();
    EXPECT_EQ(changes, 0);
}
