#include "shell/LocalIP.h"

#include <QFile>
#include <QProcess>
#include <QStringList>

#include <gtest/gtest.h>

#include <deque>

#include <arpa/inet.h>
#include <ifaddrs.h>
#include <net/if.h>

using namespace brenvale;

namespace {

constexpr unsigned up = IFF_UP | IFF_RUNNING;

bool hasCarrier(const QString& adapter) {
    QFile carrier(QStringLiteral("/sys/class/net/%1/carrier").arg(adapter));
    return carrier.open(QIODevice::ReadOnly) && carrier.readAll().startsWith('1');
}

/// A list as getifaddrs gives it.
class Interfaces {
public:
    Interfaces& add(const char* name, unsigned flags, const char* address) {
        auto& host = addresses_.emplace_back();
        host.sin_family = AF_INET;
        inet_pton(AF_INET, address, &host.sin_addr);
        return add(name, flags, reinterpret_cast<sockaddr*>(&host));
    }

    Interfaces& addIPv6(const char* name) {
        static sockaddr_in6 host{.sin6_family = AF_INET6};
        return add(name, up, reinterpret_cast<sockaddr*>(&host));
    }

    Interfaces& add(const char* name, unsigned flags, sockaddr* address) {
        entries_.push_back({.ifa_next = nullptr,
                            .ifa_name = const_cast<char*>(name), // NOLINT: the system's type
                            .ifa_flags = flags,
                            .ifa_addr = address});
        if (entries_.size() > 1) {
            entries_[entries_.size() - 2].ifa_next = &entries_.back();
        }
        return *this;
    }

    [[nodiscard]] std::string result() const {
        return LocalIPAddress::lastMatching(entries_.empty() ? nullptr : &entries_.front()).toStdString();
    }

private:
    std::deque<ifaddrs> entries_;
    std::deque<sockaddr_in> addresses_;
};

} // namespace

TEST(LocalIP, TheLastAddressInTheListWins) {
    EXPECT_EQ(Interfaces().add("wlp3s0", up, "192.168.1.7").add("eth0", up, "10.0.0.4").result(), "10.0.0.4");
    EXPECT_EQ(Interfaces().add("eth0", up, "10.0.0.4").add("wlp3s0", up, "192.168.1.7").result(),
              "192.168.1.7");
    EXPECT_EQ(Interfaces().add("enp0s3", up, "10.0.0.4").add("enp0s3", up, "10.0.0.5").result(), "10.0.0.5");
}

TEST(LocalIP, WithoutAnAdapterItIsNotFound) {
    EXPECT_EQ(Interfaces().result(), "Not found");
    EXPECT_EQ(Interfaces().add("lo", up | IFF_LOOPBACK, "127.0.0.1").result(), "Not found");
}

TEST(LocalIP, OnlyWiredAndWirelessAdaptersCount) {
    for (const auto* name : {"tun0", "wg0", "docker0", "br-1", "virbr0", "veth12", "tailscale0", "ppp0"}) {
        EXPECT_EQ(Interfaces().add(name, up, "10.8.0.2").result(), "Not found") << name;
    }
    for (const auto* name : {"en0", "enp3s0", "eno1", "enx001122", "eth0", "wlan0", "wlp2s0"}) {
        EXPECT_EQ(Interfaces().add(name, up, "10.8.0.2").result(), "10.8.0.2") << name;
    }
}

TEST(LocalIP, AnAdapterMustBeUpAndRunningAndNoLoopback) {
    for (const auto flags : {0U, unsigned{IFF_UP}, unsigned{IFF_RUNNING}, up | IFF_LOOPBACK}) {
        EXPECT_EQ(Interfaces().add("eth0", flags, "10.0.0.4").result(), "Not found") << flags;
    }
    EXPECT_EQ(Interfaces().add("eth0", up | IFF_BROADCAST | IFF_MULTICAST, "10.0.0.4").result(), "10.0.0.4");
}

TEST(LocalIP, AnAdapterWithoutAnIPv4AddressIsSkipped) {
    EXPECT_EQ(Interfaces()
                  .add("eth0", up, "10.0.0.4")
                  .addIPv6("eth1")
                  .add("eth2", up, static_cast<sockaddr*>(nullptr))
                  .result(),
              "10.0.0.4");
}

TEST(LocalIP, TheRealAdaptersAgreeWithTheSystemsOwnTool) {
    QProcess tool;
    tool.start(QStringLiteral("ip"), {"-4", "-o", "addr", "show", "up"});
    ASSERT_TRUE(tool.waitForFinished());
    QStringList expected{QStringLiteral("Not found")};
    for (const auto& line :
         QString::fromUtf8(tool.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts)) {
        const auto words = line.simplified().split(u' ');
        const bool isAdapter =
            words[1].startsWith(u"en") || words[1].startsWith(u"eth") || words[1].startsWith(u"wl");
        if (isAdapter && hasCarrier(words[1])) {
            expected.append(words[3].section(u'/', 0, 0));
        }
    }
    EXPECT_EQ(LocalIPAddress::current(), expected.back());
}
