#include "TestDesktop.h"

#include <boost/asio/ip/address_v4.hpp>

#include <utility>

namespace brenvale::phone {

TestDesktop::TestDesktop() : acceptor_(context_) {
    const Tcp::endpoint loopback(boost::asio::ip::address_v4::loopback(), 0);
    acceptor_.open(loopback.protocol(), error_);
    acceptor_.bind(loopback, error_);
    acceptor_.listen(boost::asio::socket_base::max_listen_connections, error_);
}

quint16 TestDesktop::port() const {
    boost::system::error_code ignored;
    return acceptor_.local_endpoint(ignored).port();
}

bool TestDesktop::accept() {
    Tcp::socket socket(context_);
    acceptor_.accept(socket, error_);
    if (error_) {
        return false;
    }
    link_ = std::make_unique<Link>(std::move(socket));
    link_->read_message_max(0);
    link_->accept(error_);
    return !error_;
}

std::optional<QByteArray> TestDesktop::read() {
    boost::beast::flat_buffer buffer;
    link_->read(buffer, error_);
    if (error_) {
        return std::nullopt;
    }
    const auto bytes = buffer.cdata();
    return QByteArray(static_cast<const char*>(bytes.data()), static_cast<qsizetype>(bytes.size()));
}

void TestDesktop::send(const QByteArray& message) {
    link_->text(true);
    link_->write(boost::asio::buffer(message.constData(), static_cast<std::size_t>(message.size())), error_);
}

void TestDesktop::close() {
    link_->close(boost::beast::websocket::close_code::normal, error_);
}

void TestDesktop::drop() {
    link_->next_layer().close(error_);
}

} // namespace brenvale::phone
