#pragma once

#include <QString>

struct ifaddrs;

namespace brenvale {

/// The address by which the phone reaches this computer. Any thread.
class LocalIPAddress {
public:
    LocalIPAddress() = delete;

    /// The IPv4 address of a wired or wireless adapter that is up, "Not found" where there is none. Each call
    /// reads the adapters anew.
    [[nodiscard]] static QString current();

    /// The same for a list of getifaddrs(3): of several addresses the last one in the list wins.
    [[nodiscard]] static QString lastMatching(const ifaddrs* interfaces);
};

} // namespace brenvale
