#include "link/TcpListener.h"

#include "link/LinkQueue.h"
#include "link/WebSocketConnection.h"

#include <boost/asio/ip/v6_only.hpp>
#include <boost/asio/post.hpp>

namespace brenvale {

using namespace std::chrono_literals;
namespace asio = boost::asio;
using asio::ip::tcp;
using boost::system::error_code;

namespace {

constexpr auto shortagePause = 500ms;

QString describe(const error_code& error) {
    return QString::fromStdString(error.message());
}

/// Lack of descriptors or memory passes; the waiting connection stays in the system's queue meanwhile.
bool isShortage(const error_code& error) {
    return error == asio::error::no_descriptors || error == asio::error::no_buffer_space ||
           error == asio::error::no_memory || error == boost::system::errc::too_many_files_open_in_system;
}

/// Errors after which the acceptor itself is of no use any more.
bool isListenerBroken(const error_code& error) {
    return error == asio::error::bad_descriptor || error == boost::system::errc::not_a_socket ||
           error == asio::error::invalid_argument || error == asio::error::operation_not_supported;
}

error_code listen(tcp::acceptor& acceptor, quint16 port) {
    error_code error;
    const auto protocol = acceptor.local_endpoint(error).protocol(); // unbound, it still tells the family
    acceptor.bind(tcp::endpoint(protocol, port), error);
    if (!error) {
        acceptor.listen(asio::socket_base::max_listen_connections, error);
    }
    return error;
}

} // namespace

std::expected<std::shared_ptr<Listener>, QString> TcpTransport::makeListener(quint16 port) {
    tcp::acceptor acceptor(queue_.context());
    error_code error;
    acceptor.open(tcp::v6(), error);
    if (!error) {
        acceptor.set_option(asio::ip::v6_only(false), error);
    } else {
        acceptor.open(tcp::v4(), error); // a kernel without IPv6
    }
    if (!error) {
        acceptor.set_option(tcp::acceptor::reuse_address(true), error);
    }
    if (error) {
        return std::unexpected(describe(error));
    }
    return std::make_shared<TcpListener>(std::move(acceptor), port);
}

TcpListener::TcpListener(tcp::acceptor acceptor, quint16 port)
    : acceptor_(std::move(acceptor)), pause_(acceptor_.get_executor()), port_(port) {}

void TcpListener::start() {
    if (const auto error = listen(acceptor_, port_)) {
        report({State::failed, describe(error)});
        return;
    }
    report({State::ready, {}});
    acceptNext();
}

void TcpListener::cancel() {
    if (isEnded_) {
        return;
    }
    isEnded_ = true;
    pause_.cancel();
    error_code ignored;
    acceptor_.close(ignored);
    report({State::cancelled, {}});
}

void TcpListener::acceptNext() {
    acceptor_.async_accept([self = shared_from_this()](const error_code& error, tcp::socket socket) {
        self->accepted(error, std::move(socket));
    });
}

void TcpListener::accepted(const error_code& error, tcp::socket socket) {
    if (isEnded_) {
        return;
    }
    if (isListenerBroken(error)) {
        report({State::failed, describe(error)});
        return;
    }
    if (isShortage(error)) {
        pause_.expires_after(shortagePause);
        pause_.async_wait([self = shared_from_this()](const error_code& cancelled) {
            if (!cancelled) {
                self->acceptNext();
            }
        });
        return;
    }
    if (!error) {
        newConnectionHandler(std::make_shared<WebSocketConnection>(std::move(socket)));
    }
    acceptNext();
}

void TcpListener::report(StateReport state) {
    asio::post(acceptor_.get_executor(),
               [self = shared_from_this(), state = std::move(state)] { self->stateUpdateHandler(state); });
}

} // namespace brenvale
