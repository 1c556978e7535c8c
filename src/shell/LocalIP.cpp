#include "shell/LocalIP.h"

#include <algorithm>
#include <array>
#include <memory>
#include <string_view>

#include <ifaddrs.h>
#include <net/if.h>
#include <netdb.h>
#include <netinet/in.h>

namespace brenvale {

namespace {

/// Wired and wireless adapters by the names that Linux gives them; bridges, tunnels and containers have
/// others.
constexpr std::array<std::string_view, 3> adapterNames{"en", "eth", "wl"};

bool isUpOnTheNetwork(unsigned flags) {
    constexpr unsigned looked = IFF_UP | IFF_LOOPBACK | IFF_RUNNING;
    return (flags & looked) == (IFF_UP | IFF_RUNNING);
}

bool matches(const ifaddrs& entry) {
    const std::string_view name(entry.ifa_name);
    return isUpOnTheNetwork(entry.ifa_flags) && entry.ifa_addr != nullptr &&
           entry.ifa_addr->sa_family == AF_INET &&
           std::ranges::any_of(adapterNames, [name](auto adapter) { return name.starts_with(adapter); });
}

/// Empty where the address has no text.
QString numericHost(const sockaddr* address) {
    std::array<char, NI_MAXHOST> host{};
    (void)getnameinfo(address, sizeof(sockaddr_in), host.data(), host.size(), nullptr, 0, NI_NUMERICHOST);
    return QString::fromLatin1(host.data());
}

} // namespace

QString LocalIPAddress::current() {
    ifaddrs* interfaces = nullptr;
    if (getifaddrs(&interfaces) != 0) {
        return lastMatching(nullptr);
    }
    const std::unique_ptr<ifaddrs, decltype(&freeifaddrs)> owner(interfaces, freeifaddrs);
    return lastMatching(interfaces);
}

QString LocalIPAddress::lastMatching(const ifaddrs* interfaces) {
    auto result = QStringLiteral("Not found");
    for (const auto* entry = interfaces; entry != nullptr; entry = entry->ifa_next) {
        if (matches(*entry)) {
            result = numericHost(entry->ifa_addr);
        }
    }
    return result;
}

} // namespace brenvale
