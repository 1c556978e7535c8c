#include "integration/LiveServer.h"

#include <boost/asio/ip/v6_only.hpp>

#include <sys/resource.h>

using namespace brenvale;
using boost::asio::ip::tcp;

namespace {

/// Another process's socket on a port, of one address family alone.
class Squatter {
public:
    Squatter(const tcp& family, quint16 port) : acceptor_(context_) {
        acceptor_.open(family);
        if (family == tcp::v6()) {
            acceptor_.set_option(boost::asio::ip::v6_only(true));
        }
        acceptor_.bind({family, port});
        acceptor_.listen();
    }

private:
    boost::asio::io_context context_;
    tcp::acceptor acceptor_;
};

/// The soft limit of open descriptors, restored at the end.
class DescriptorLimit {
public:
    DescriptorLimit() { ::getrlimit(RLIMIT_NOFILE, &saved_); }
    ~DescriptorLimit() { ::setrlimit(RLIMIT_NOFILE, &saved_); }
    DescriptorLimit(const DescriptorLimit&) = delete;
    DescriptorLimit& operator=(const DescriptorLimit&) = delete;

    void set(rlim_t descriptors) const {
        const rlimit limit{.rlim_cur = descriptors, .rlim_max = saved_.rlim_max};
        ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &limit), 0);
    }

private:
    rlimit saved_{};
};

rlim_t lowestFreeDescriptor() {
    const int descriptor = ::dup(0);
    ::close(descriptor);
    return static_cast<rlim_t>(descriptor);
}

} // namespace

using Listening = LiveServer;

TEST_F(Listening, TakesIPv4AndIPv6) {
    start();
    for (const auto* host : {"127.0.0.1", "::1"}) {
        Phone phone;
        EXPECT_TRUE(phone.connect(QString::fromLatin1(host), server->port()).has_value()) << host;
        EXPECT_TRUE(waitUntil([&] { return store->connectedRemoteIP.get() == QLatin1StringView(host); }))
            << host;
    }
    EXPECT_TRUE(waitForLog("Incoming connection from 127.0.0.1:")) << "IPv4 is shown as plain IPv4";
    EXPECT_TRUE(waitForLog("Incoming connection from [::1]:"));
}

TEST_F(Listening, ATakenPortIsRetriedUntilItComesFree) {
    for (const auto& family : {tcp::v4(), tcp::v6()}) {
        fake.userDefaults.set(QStringLiteral("port"), freePort());
        auto squatter = std::make_unique<Squatter>(family, server->port());
        server->start();
        const auto failures = [this] {
            return statuses().count(QStringLiteral("failed – Address already in use"));
        };
        const auto before = failures();
        EXPECT_TRUE(waitUntil([&] { return failures() >= before + 3; }));
        EXPECT_FALSE(statuses().contains(listening()));
        squatter.reset();
        EXPECT_TRUE(waitForStatus(listening()));
        Phone phone;
        greet(phone);
    }
}

TEST_F(Listening, StartOnARunningServerDropsThePhonesAndLosesNoBind) {
    start();
    for (int restart = 0; restart < 20; ++restart) {
        Phone phone;
        greet(phone);
        const auto listens = statuses().count(listening());
        server->start();
        EXPECT_TRUE(waitUntil([&] { return statuses().count(listening()) > listens; }));
        EXPECT_TRUE(phone.waitForClosed());
    }
    EXPECT_EQ(statuses().filter(QStringLiteral("failed")).size(), 0);
    EXPECT_EQ(statuses().count(QStringLiteral("stopped")), 20);
    EXPECT_TRUE(waitForLog(" cancelled", 40));
    EXPECT_TRUE(waitUntil([this] { return !store->connectedRemoteIP.get(); }));
}

TEST_F(Listening, TheReportsOfARestartKeepTheirOrder) {
    start();
    fake.userDefaults.set(QStringLiteral("port"), freePort());
    server->start();
    ASSERT_TRUE(waitForStatus(listening()));
    ASSERT_EQ(statuses().size(), 3);
    EXPECT_EQ(statuses()[1], QStringLiteral("stopped"));
}

TEST_F(Listening, ALackOfDescriptorsPassesAndNobodyIsLost) {
    start();
    boost::asio::io_context context;
    tcp::socket caller(context);
    caller.open(tcp::v4());
    const DescriptorLimit limit;
    limit.set(lowestFreeDescriptor());
    boost::system::error_code error;
    caller.connect({boost::asio::ip::address_v4::loopback(), server->port()}, error);
    EXPECT_FALSE(error) << error.message();
    const QDeadlineTimer refusedLongEnough(
        std::chrono::milliseconds(700)); // longer than one pause of the listener
    EXPECT_TRUE(waitUntil([&] { return refusedLongEnough.hasExpired(); }));
    EXPECT_TRUE(fake.log.lines().isEmpty());
    limit.set(lowestFreeDescriptor() + 64);
    EXPECT_TRUE(waitForLog("Incoming connection from 127.0.0.1:"));
    Phone phone;
    greet(phone);
}

TEST_F(Listening, NoDescriptorAtAllIsAnErrorAtOnce) {
    const DescriptorLimit limit;
    limit.set(lowestFreeDescriptor());
    server->start();
    EXPECT_EQ(statuses(), QStringList{QStringLiteral("error: Too many open files")});
}
