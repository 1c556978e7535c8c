#include "link/TcpListener.h"

#include "link/LinkQueue.h"
#include "link/WebSocketConnection.h"

#include <boost/asio/ip/v6_only.hpp>
#include <boost/asio/post.hpp>

#include <cerrno>

#include <sys/socket.h>
#include <unistd.h>

namespace brenvale {

using namespace std::chrono_literals;
namespace asio = boost::asio;
using asio::ip::tcp;
using boost::system::error_code;

namespace {

constexpr auto shortagePause = 500ms;

QString textOf(const error_code& error) {
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

error_code systemError() {
    return {errno, boost::system::system_category()};
}

/// Opens the acceptor's socket, closed in started programs from the moment that it is there, which Asio's own
/// way does not do.
error_code open(tcp::acceptor& acceptor, const tcp& protocol) {
    const int socket =
        ::socket(protocol.family(), protocol.type() | SOCK_CLOEXEC | SOCK_NONBLOCK, protocol.protocol());
    if (socket < 0) {
        return systemError();
    }
    error_code error;
    acceptor.assign(protocol, socket, error);
    if (error) {
        ::close(socket);
    }
    return error;
}

/// Takes the next connection that waits, likewise.
error_code takeNext(tcp::acceptor& acceptor, tcp::socket& connection) {
    error_code error;
    const auto protocol = acceptor.local_endpoint(error).protocol();
    if (error) {
        return error;
    }
    const int socket = ::accept4(acceptor.native_handle(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
    if (socket < 0) {
        return systemError();
    }
    connection.assign(protocol, socket, error);
    if (error) {
        ::close(socket);
    }
    return error;
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
    auto error = open(acceptor, tcp::v6());
    if (!error) {
        acceptor.set_option(asio::ip::v6_only(false), error);
    } else {
        error = open(acceptor, tcp::v4()); // a kernel without IPv6
    }
    if (!error) {
        acceptor.set_option(tcp::acceptor::reuse_address(true), error);
    }
    if (error) {
        return std::unexpected(textOf(error));
    }
    return std::make_shared<TcpListener>(std::move(acceptor), port);
}

TcpListener::TcpListener(tcp::acceptor acceptor, quint16 port)
    : acceptor_(std::move(acceptor)), pause_(acceptor_.get_executor()), port_(port) {}

void TcpListener::start() {
    if (const auto error = listen(acceptor_, port_)) {
        report({State::failed, textOf(error)});
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
    acceptor_.async_wait(tcp::acceptor::wait_read, [self = shared_from_this()](const error_code& error) {
        self->takeConnection(error);
    });
}

void TcpListener::takeConnection(const error_code& waitError) {
    if (isEnded_) {
        return;
    }
    tcp::socket socket(acceptor_.get_executor());
    const auto error = waitError ? waitError : takeNext(acceptor_, socket);
    if (isListenerBroken(error)) {
        report({State::failed, textOf(error)});
        return;
    }
    if (isShortage(error)) {
        retryLater();
        return;
    }
    if (!error) {
        newConnectionHandler(std::make_shared<WebSocketConnection>(std::move(socket)));
    }
    acceptNext(); // also where the one that waited has gone again
}

void TcpListener::retryLater() {
    pause_.expires_after(shortagePause);
    pause_.async_wait([self = shared_from_this()](const error_code& cancelled) {
        if (!cancelled) {
            self->acceptNext();
        }
    });
}

void TcpListener::report(StateReport state) {
    asio::post(acceptor_.get_executor(),
               [self = shared_from_this(), state = std::move(state)] { self->stateUpdateHandler(state); });
}

} // namespace brenvale
