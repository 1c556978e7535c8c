#include "platform/linux/RouteMessages.h"

#include <array>
#include <cerrno>

#include <linux/netlink.h>
#include <linux/rtnetlink.h>
#include <sys/socket.h>
#include <unistd.h>

namespace brenvale {

namespace {

enum class Reading { message, nothing, end };

/// Takes one message, whatever it says.
Reading readOne(int socket) {
    std::array<char, 1024> start{}; // the rest of a longer one is dropped
    const auto size = ::recv(socket, start.data(), start.size(), MSG_DONTWAIT);
    if (size > 0 || (size < 0 && errno == ENOBUFS)) { // then some were lost
        return Reading::message;
    }
    return size < 0 && (errno == EAGAIN || errno == EINTR) ? Reading::nothing : Reading::end;
}

} // namespace

RouteMessages::RouteMessages(int socket, std::function<void()> observer)
    : socket_(socket), observer_(std::move(observer)), notifier_(QSocketNotifier::Read) {
    if (socket_ < 0) {
        return;
    }
    notifier_.setSocket(socket_);
    QObject::connect(&notifier_, &QSocketNotifier::activated, &notifier_, [this] { read(); });
    notifier_.setEnabled(true);
}

RouteMessages::~RouteMessages() {
    notifier_.setEnabled(false);
    if (socket_ >= 0) {
        ::close(socket_);
    }
}

int RouteMessages::openSocket() {
    const int socket = ::socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC | SOCK_NONBLOCK, NETLINK_ROUTE);
    if (socket < 0) {
        return -1;
    }
    sockaddr_nl address{};
    address.nl_family = AF_NETLINK;
    address.nl_groups = RTMGRP_LINK | RTMGRP_IPV4_IFADDR;
    if (::bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        ::close(socket);
        return -1;
    }
    return socket;
}

void RouteMessages::read() {
    constexpr int manyAtOnce = 64; // what is left comes in the next turn of the loop
    auto reading = readOne(socket_);
    const bool hasChanged = reading == Reading::message;
    for (int count = 1; count < manyAtOnce && reading == Reading::message; ++count) {
        reading = readOne(socket_);
    }
    if (reading == Reading::end) {
        notifier_.setEnabled(false);
    }
    if (hasChanged) {
        observer_();
    }
}

Subscription RouteAddressWatch::observe(std::function<void()> observer) {
    return std::make_shared<RouteMessages>(RouteMessages::openSocket(), std::move(observer));
}

} // namespace brenvale
