#pragma once

#include "platform/AddressWatch.h"

#include <QSocketNotifier>

namespace brenvale {

/// What the kernel tells of adapters and IPv4 addresses on a socket (rtnetlink(7)). Only that something
/// changed is passed on, once for all that has come together. On main.
class RouteMessages final {
public:
    /// Takes the socket over, which must not block; -1 tells nothing.
    RouteMessages(int socket, std::function<void()> observer);
    ~RouteMessages();
    RouteMessages(const RouteMessages&) = delete;
    RouteMessages& operator=(const RouteMessages&) = delete;

    /// A socket on which the kernel tells; -1 where it makes none.
    [[nodiscard]] static int openSocket();

private:
    void read();

    int socket_;
    std::function<void()> observer_;
    QSocketNotifier notifier_;
};

/// Every observer has a socket of its own, and nothing is watched without one.
class RouteAddressWatch final : public AddressWatch {
public:
    [[nodiscard]] Subscription observe(std::function<void()> observer) override;
};

} // namespace brenvale
