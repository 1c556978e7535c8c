#pragma once

#include <QByteArray>

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/websocket/stream.hpp>

#include <memory>
#include <optional>

namespace brenvale::phone {

/// The desktop's end of one link at a time, on loopback. Blocking calls, to be made by one thread other than
/// the phone's. A call that fails gives nothing and keeps the error.
class TestDesktop {
public:
    TestDesktop();

    [[nodiscard]] quint16 port() const;

    bool accept();
    std::optional<QByteArray> read();
    [[nodiscard]] bool wasText() const { return link_->got_text(); }
    void send(const QByteArray& message);
    void close();
    /// Ends the link without a goodbye.
    void drop();

    [[nodiscard]] const boost::system::error_code& error() const { return error_; }

private:
    using Tcp = boost::asio::ip::tcp;
    using Link = boost::beast::websocket::stream<Tcp::socket>;

    boost::asio::io_context context_;
    Tcp::acceptor acceptor_;
    std::unique_ptr<Link> link_; ///< from the first accept on
    boost::system::error_code error_;
};

} // namespace brenvale::phone
