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
#include <utility>

namespace brenvale {

/// The byte stream under a WebSocket, in the shape that Asio and Beast call an AsyncStream: a TCP socket, and
/// three things that the protocol stack does not offer. Bytes that were read too far can be put back. What
/// the stack writes without a completion handler, which is its answer to a handshake alone, is held, to be
/// looked at before it leaves. And the end of a connection has a limit: the stack waits for the peer to
/// close, and a peer that never does would keep the connection for ever.
class LinkSocket {
public:
    using executor_type = boost::asio::ip::tcp::socket::executor_type;

    explicit LinkSocket(boost::asio::ip::tcp::socket&& socket) : socket_(std::move(socket)) {}

    [[nodiscard]] boost::asio::ip::tcp::socket& socket() { return socket_; }

    /// The next read begins with `bytes`.
    void putBack(std::string bytes) { putBack_ = std::move(bytes); }

    /// Gives what was held.
    [[nodiscard]] std::string takeHeld() { return std::exchange(held_, {}); }

    // What Asio and Beast call.
    [[nodiscard]] executor_type get_executor() { return socket_.get_executor(); }

    template <typename Buffers, typename Handler>
    void async_read_some(const Buffers& buffers, Handler&& handler) {
        if (putBack_.empty()) {
            socket_.async_read_some(buffers, std::forward<Handler>(handler));
            return;
        }
        const auto size = boost::asio::buffer_copy(buffers, boost::asio::buffer(putBack_));
        putBack_.erase(0, size);
        completeLater(std::forward<Handler>(handler), size);
    }

    template <typename Buffers, typename Handler>
    void async_write_some(const Buffers& buffers, Handler&& handler) {
        socket_.async_write_some(buffers, std::forward<Handler>(handler));
    }

    template <typename Buffers>
    std::size_t write_some(const Buffers& buffers, boost::system::error_code& error) {
        error = {};
        const auto size = boost::asio::buffer_size(buffers);
        const auto before = held_.size();
        held_.resize(before + size);
        return boost::asio::buffer_copy(boost::asio::buffer(held_.data() + before, size), buffers);
    }

    // What Asio and Beast look for, and never call.
    template <typename Buffers>
    std::size_t write_some(const Buffers& buffers);
    template <typename Buffers>
    std::size_t read_some(const Buffers& buffers);
    template <typename Buffers>
    std::size_t read_some(const Buffers& buffers, boost::system::error_code& error);

private:
    template <typename Handler>
    void completeLater(Handler&& handler, std::size_t size) {
        boost::asio::post(get_executor(),
                          boost::beast::bind_front_handler(std::forward<Handler>(handler),
                                                           boost::system::error_code(), size));
    }

    boost::asio::ip::tcp::socket socket_;
    std::string putBack_;
    std::string held_;
};

/// What the protocol stack calls to end a connection at once; found by the argument's type.
inline void beast_close_socket(LinkSocket& stream) {
    boost::system::error_code ignored;
    stream.socket().close(ignored);
}

/// What the protocol stack calls after the last frame; found by the argument's type.
template <typename Handler>
void async_teardown(boost::beast::role_type role, LinkSocket& stream, Handler&& handler) {
    constexpr std::chrono::seconds patience{5};
    auto& socket = stream.socket();
    auto timer = std::make_shared<boost::asio::steady_timer>(socket.get_executor(), patience);
    const auto hasEnded = std::make_shared<bool>(false); // the timer may have expired just before the end
    timer->async_wait([&socket, hasEnded](const boost::system::error_code& error) {
        if (!error && !*hasEnded) {
            boost::system::error_code ignored;
            socket.shutdown(boost::asio::ip::tcp::socket::shutdown_both, ignored); // reads then find the end
        }
    });
    boost::beast::websocket::async_teardown(role, socket,
                                            [timer, hasEnded, handler = std::forward<Handler>(handler)](
                                                const boost::system::error_code& error) mutable {
                                                *hasEnded = true;
                                                timer->cancel();
                                                std::move(handler)(error);
                                            });
}

} // namespace brenvale
