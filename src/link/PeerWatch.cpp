#include "link/PeerWatch.h"

#include <netinet/tcp.h>

namespace brenvale {

namespace asio = boost::asio;
using boost::system::error_code;

namespace {

using KeepAliveIdle = asio::detail::socket_option::integer<IPPROTO_TCP, TCP_KEEPIDLE>;
using KeepAliveInterval = asio::detail::socket_option::integer<IPPROTO_TCP, TCP_KEEPINTVL>;
using KeepAliveCount = asio::detail::socket_option::integer<IPPROTO_TCP, TCP_KEEPCNT>;
using UserTimeout = asio::detail::socket_option::integer<IPPROTO_TCP, TCP_USER_TIMEOUT>;

} // namespace

void watchForDeadPeer(asio::ip::tcp::socket& socket) {
    // The probes alone do not run while data waits for an acknowledgement, and the time limit alone does not
    // run while none does.
    error_code ignored;
    socket.set_option(asio::socket_base::keep_alive(true), ignored);
    socket.set_option(KeepAliveInterval(15), ignored);
    socket.set_option(KeepAliveCount(4), ignored);
    socket.set_option(UserTimeout(120 * 1000), ignored);
    socket.set_option(KeepAliveIdle(60), ignored);
}

void askPeerOften(asio::ip::tcp::socket& socket) {
    constexpr int unlimited = 127; // the most that the system takes
    error_code ignored;
    socket.set_option(KeepAliveInterval(1), ignored);
    socket.set_option(KeepAliveCount(unlimited), ignored);
    socket.set_option(UserTimeout(0), ignored);
    socket.set_option(KeepAliveIdle(1), ignored); // the last: it sets the probes going
}

bool hasHeardFromPeer(asio::ip::tcp::socket& socket, std::chrono::milliseconds time) {
    tcp_info info{};
    socklen_t size = sizeof info;
    if (::getsockopt(socket.native_handle(), IPPROTO_TCP, TCP_INFO, &info, &size) != 0) {
        return true;
    }
    return std::chrono::milliseconds(info.tcpi_last_ack_recv) < time;
}

} // namespace brenvale
