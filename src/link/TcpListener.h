#pragma once

#include "link/Transport.h"

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/steady_timer.hpp>

namespace brenvale {

class LinkQueue;

/// Listens on a TCP port of all interfaces, IPv6 and IPv4 through one socket, and hands over WebSocket
/// connections. No program that this one starts inherits a socket: one that did would keep the port taken,
/// and phones waiting for an answer that nobody gives.
class TcpListener final : public Listener, public std::enable_shared_from_this<TcpListener> {
public:
    TcpListener(boost::asio::ip::tcp::acceptor acceptor, quint16 port);

    void start() override;
    void cancel() override;

private:
    void acceptNext();
    void takeConnection(const boost::system::error_code& waitError);
    void retryLater();
    void report(StateReport state);

    boost::asio::ip::tcp::acceptor acceptor_; ///< open, bound at start
    boost::asio::steady_timer pause_;
    quint16 port_;
    bool isEnded_ = false;
};

/// Makes TcpListeners whose sockets belong to a link queue, which must outlive them.
class TcpTransport final : public Transport {
public:
    explicit TcpTransport(LinkQueue& queue) : queue_(queue) {}

    [[nodiscard]] std::expected<std::shared_ptr<Listener>, QString> makeListener(quint16 port) override;

private:
    LinkQueue& queue_;
};

} // namespace brenvale
