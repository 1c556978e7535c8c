#include "link/WebSocketConnection.h"

#include "link/Handshake.h"
#include "link/PeerWatch.h"

#include <boost/asio/ip/host_name.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/read.hpp>
#include <boost/asio/read_until.hpp>
#include <boost/asio/write.hpp>
#include <boost/beast/http/empty_body.hpp>
#include <boost/beast/http/message.hpp>
#include <boost/beast/http/parser.hpp>
#include <boost/beast/websocket/rfc6455.hpp>

#include <algorithm>

namespace brenvale {

using namespace std::chrono_literals;
namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = beast::http;
namespace websocket = beast::websocket;
using boost::system::error_code;

namespace {

constexpr auto handshakeLimit = 30s;
constexpr std::size_t maxRequestSize = 8192;
constexpr auto restLimit = 1s;
constexpr auto peerPatience = 10s;
constexpr std::size_t maxRestSize = 128 << 10;
/// Up to here a copy costs less than a new buffer: all messages but logs, files and long texts.
constexpr std::size_t smallMessageSize = 900;
constexpr std::size_t maxMessageSize = std::size_t{128} << 20;
constexpr auto forbidden = "HTTP/1.1 403 Forbidden\r\nConnection: close\r\nContent-Length: 0\r\n\r\n";
constexpr auto tooLong = "HTTP/1.1 431 Request Header Fields Too Large\r\n"
                         "Connection: close\r\nContent-Length: 0\r\n\r\n";

/// The peer's address; one of IPv4 that came over the IPv6 socket is shown as plain IPv4.
Endpoint endpointOf(const asio::ip::tcp::socket& socket) {
    error_code error;
    const auto remote = socket.remote_endpoint(error);
    if (error) {
        return {.text = "(unknown)", .host = {}};
    }
    auto address = remote.address();
    if (address.is_v6() && address.to_v6().is_v4_mapped()) {
        address = asio::ip::make_address_v4(asio::ip::v4_mapped, address.to_v6());
    }
    const auto host = QByteArray::fromStdString(address.to_string());
    const auto shown = address.is_v6() ? "[" + host + "]" : host;
    return {.text = shown + ":" + QByteArray::number(remote.port()), .host = QString::fromUtf8(host)};
}

QByteArray describe(const error_code& error) {
    if (error == websocket::error::message_too_big) {
        return "message too big";
    }
    return QByteArray::fromStdString(error.message());
}

/// Whether any of the request's origins is foreign, whichever of its hosts it is held against.
bool isForeign(const http::request<http::empty_body>& request) {
    const auto origins = request.equal_range(http::field::origin);
    const auto hosts = request.equal_range(http::field::host);
    error_code ignored;
    const auto ownName = asio::ip::host_name(ignored);
    return std::any_of(origins.first, origins.second, [&](const auto& origin) {
        const auto isForeignTo = [&](std::string_view host) {
            return isForeignWebOrigin(origin.value(), host, ownName);
        };
        return hosts.first == hosts.second ? isForeignTo({})
                                           : std::any_of(hosts.first, hosts.second, [&](const auto& host) {
                                                 return isForeignTo(host.value());
                                             });
    });
}

} // namespace

WebSocketConnection::WebSocketConnection(asio::ip::tcp::socket&& accepted)
    : stream_(std::move(accepted)),
      endpoint_(endpointOf(socket())),
      handshakeDeadline_(stream_.get_executor()),
      peerDeadline_(stream_.get_executor()) {
    error_code ignored;
    socket().set_option(asio::ip::tcp::no_delay(true), ignored);
    watchForDeadPeer(socket());
    stream_.read_message_max(maxMessageSize);
    stream_.auto_fragment(false);
    stream_.text(true);
}

void WebSocketConnection::start() {
    asio::post(stream_.get_executor(), [self = shared_from_this()] {
        if (!self->isEnded_) {
            self->stateUpdateHandler({State::preparing, {}});
            self->readRequest();
        }
    });
}

void WebSocketConnection::readRequest() {
    handshakeDeadline_.expires_after(handshakeLimit);
    handshakeDeadline_.async_wait([self = shared_from_this()](const error_code& error) {
        if (!error && !self->isOpen_) {
            self->end(State::failed, "handshake timed out");
        }
    });
    asio::async_read_until(stream_.next_layer(), asio::dynamic_buffer(request_, maxRequestSize), "\r\n\r\n",
                           [self = shared_from_this()](const error_code& error, std::size_t /*size*/) {
                               if (error == asio::error::not_found) {
                                   self->sendAnswer(tooLong, "request too long");
                               } else if (error) {
                                   self->end(State::failed, describe(error));
                               } else {
                                   self->answerRequest();
                               }
                           });
}

void WebSocketConnection::answerRequest() {
    if (isEnded_) {
        return;
    }
    http::request_parser<http::empty_body> parser;
    parser.eager(true); // to find out whether a body follows
    error_code error;
    const auto size = parser.put(asio::buffer(request_), error);
    if (isForeign(parser.get())) {
        sendAnswer(forbidden, "foreign web origin refused");
        return;
    }
    if (!error && !parser.is_done()) {
        error = http::error::unexpected_body;
    }
    if (error) {
        end(State::failed, describe(error));
        return;
    }
    auto& bytes = stream_.next_layer();
    bytes.putBack(request_.substr(size)); // frames that came along
    stream_.accept(parser.get(), error);  // the stack judges the request, and never waits: its answer is held
    sendAnswer(withoutServerField(bytes.takeHeld()), error ? describe(error) : QByteArray());
}

/// Ends the handshake: with `refusal` as the reason of the end, or open where there is none.
void WebSocketConnection::sendAnswer(std::string answer, const QByteArray& refusal) {
    if (isEnded_) {
        return;
    }
    answer_ = std::move(answer);
    asio::async_write(stream_.next_layer(), asio::buffer(answer_),
                      [self = shared_from_this(), refusal](const error_code& error, std::size_t /*size*/) {
                          if (refusal.isEmpty() && !error) {
                              self->opened();
                              return;
                          }
                          self->endAfterRest(refusal.isEmpty() ? describe(error) : refusal);
                      });
}

/// Ends when the refused client has nothing more to say, but soon: closing before it has been read to its end
/// would take the answer from it.
void WebSocketConnection::endAfterRest(const QByteArray& refusal) {
    error_code ignored;
    socket().shutdown(asio::socket_base::shutdown_send, ignored);
    handshakeDeadline_.expires_after(restLimit);
    handshakeDeadline_.async_wait([self = shared_from_this(), refusal](const error_code& error) {
        if (!error) {
            self->end(State::failed, refusal);
        }
    });
    request_.resize(maxRestSize);
    asio::async_read(
        stream_.next_layer(), asio::buffer(request_),
        [self = shared_from_this(), refusal](const error_code& /*atItsEnd*/, std::size_t /*size*/) {
            self->end(State::failed, refusal);
        });
}

void WebSocketConnection::opened() {
    if (isEnded_) {
        return;
    }
    isOpen_ = true;
    handshakeDeadline_.cancel();
    request_ = {};
    answer_ = {};
    stateUpdateHandler({State::ready, {}});
    writeNext();
}

void WebSocketConnection::receiveMessage(ReceiveHandler handler) {
    stream_.async_read(incoming_, [self = shared_from_this(), handler = std::move(handler)](
                                      const error_code& error, std::size_t /*size*/) mutable {
        if (self->isEnded_) {
            return;
        }
        if (error) {
            self->incoming_ = {};
            handler({.error = describe(error)});
            self->end(State::failed, describe(error));
        } else {
            handler({.data = self->takeIncoming(), .isWebSocketMessage = true, .isComplete = true});
        }
    });
}

MessageBuffer WebSocketConnection::takeIncoming() {
    if (incoming_.size() > smallMessageSize) {
        return std::exchange(incoming_, {});
    }
    MessageBuffer copy(incoming_.text());
    incoming_.consume(incoming_.size());
    return copy;
}

void WebSocketConnection::send(std::shared_ptr<const OutgoingText> text, SendCompletion completion) {
    outgoing_.push_back({std::move(text), std::move(completion)});
    if (isEnded_) {
        asio::post(stream_.get_executor(), [self = shared_from_this()] { self->failPendingSends(); });
    } else if (isOpen_) {
        writeNext();
    }
}

void WebSocketConnection::writeNext() {
    while (!isWriting_ && !outgoing_.empty() && !isEnded_) {
        writing_ = outgoing_.front().text->bytes();
        if (writing_.isEmpty()) { // a message never is
            completeFront("the text can't be read back");
        } else {
            startWriting();
        }
    }
}

void WebSocketConnection::startWriting() {
    isWriting_ = true;
    stream_.async_write(asio::buffer(writing_.constData(), static_cast<std::size_t>(writing_.size())),
                        [self = shared_from_this()](const error_code& error, std::size_t /*size*/) {
                            self->isWriting_ = false;
                            self->writing_.clear();
                            self->completeFront(error ? describe(error) : QByteArray());
                            if (self->isEnded_) {
                                self->failPendingSends();
                            } else {
                                self->writeNext();
                            }
                        });
}

void WebSocketConnection::completeFront(const QByteArray& error) {
    auto front = std::move(outgoing_.front());
    outgoing_.pop_front();
    if (front.completion) {
        front.completion(error);
    }
}

void WebSocketConnection::checkPeer() {
    if (isEnded_) {
        return;
    }
    askPeerOften(socket());
    peerDeadline_.expires_after(peerPatience);
    peerDeadline_.async_wait([self = shared_from_this()](const error_code& error) {
        if (error || self->isEnded_) {
            return;
        }
        if (hasHeardFromPeer(self->socket(), peerPatience)) {
            watchForDeadPeer(self->socket());
        } else {
            self->end(State::failed, describe(asio::error::timed_out));
        }
    });
}

void WebSocketConnection::refuse(const QByteArray& reason) {
    end(State::failed, reason);
}

void WebSocketConnection::cancel() {
    end(State::cancelled, {});
}

void WebSocketConnection::end(State state, const QByteArray& error) {
    if (isEnded_) {
        return;
    }
    isEnded_ = true;
    handshakeDeadline_.cancel();
    peerDeadline_.cancel();
    error_code ignored;
    socket().close(ignored);
    asio::post(stream_.get_executor(), [self = shared_from_this(), state, error] {
        self->stateUpdateHandler({state, error});
        if (!self->isWriting_) {
            self->failPendingSends();
        }
    });
}

void WebSocketConnection::failPendingSends() {
    for (auto& pending : std::exchange(outgoing_, {})) {
        if (pending.completion) {
            pending.completion("connection is closed");
        }
    }
}

} // namespace brenvale
