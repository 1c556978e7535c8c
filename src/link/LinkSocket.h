#pragma once

#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/beast/core/role.hpp>
#include <boost/beast/websocket/teardown.hpp>

#include <chrono>
#include <memory>

namespace brenvale {

/// The TCP socket under a WebSocket. It is a type of its own so that the end of a connection can have a
/// limit: the protocol stack waits for the peer to close, and a peer that never does would keep the
/// connection for ever.
class LinkSocket : public boost::asio::ip::tcp::socket {
public:
    explicit LinkSocket(boost::asio::ip::tcp::socket&& socket)
        : boost::asio::ip::tcp::socket(std::move(socket)) {}
};

/// What the protocol stack calls after the last frame; found by the argument's type.
template <typename Handler>
void async_teardown(boost::beast::role_type role, LinkSocket& socket, Handler&& handler) {
    constexpr std::chrono::seconds patience{5};
    auto timer = std::make_shared<boost::asio::steady_timer>(socket.get_executor(), patience);
    const auto hasEnded = std::make_shared<bool>(false); // the timer may have expired just before the end
    timer->async_wait([&socket, hasEnded](const boost::system::error_code& error) {
        if (!error && !*hasEnded) {
            boost::system::error_code ignored;
            socket.shutdown(boost::asio::ip::tcp::socket::shutdown_both, ignored); // reads then find the end
        }
    });
    boost::beast::websocket::async_teardown(role, static_cast<boost::asio::ip::tcp::socket&>(socket),
                                            [timer, hasEnded, handler = std::forward<Handler>(handler)](
                                                const boost::system::error_code& error) mutable {
                                                *hasEnded = true;
                                                timer->cancel();
                                                std::move(handler)(error);
                                            });
}

} // namespace brenvale
