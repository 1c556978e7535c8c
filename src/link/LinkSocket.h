#pragma once

#include <boost/asio/buffer.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/beast/core/bind_handler.hpp>
#include <boost/beast/core/role.hpp>
#include <boost/beast/websocket/teardown.hpp>

#include <chrono>
#include <memory>
#include <string>

namespace brenvale {

/// The TCP socket under a WebSocket. It is a type of its own for two reasons. The end of a connection can
/// have a limit: the protocol stack waits for the peer to close, and a peer that never does would keep the
/// connection for ever. And bytes can be put back that were read too far.
class LinkSocket : public boost::asio::ip::tcp::socket {
public:
    explicit LinkSocket(boost::asio::ip::tcp::socket&& socket)
        : boost::asio::ip::tcp::socket(std::move(socket)) {}

    /// The next read begins with `bytes`.
    void putBack(std::string bytes) { putBack_ = std::move(bytes); }

    template <typename Buffers, typename Handler>
    void async_read_some(const Buffers& buffers, Handler&& handler) {
        if (putBack_.empty()) {
            boost::asio::ip::tcp::socket::async_read_some(buffers, std::forward<Handler>(handler));
            return;
        }
        const auto size = boost::asio::buffer_copy(buffers, boost::asio::buffer(putBack_));
        putBack_.erase(0, size);
        boost::asio::post(get_executor(),
                          boost::beast::bind_front_handler(std::forward<Handler>(handler),
                                                           boost::system::error_code(), size));
    }

private:
    std::string putBack_;
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
