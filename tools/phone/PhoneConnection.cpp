#include "PhoneConnection.h"

#include <boost/asio/connect.hpp>
#include <boost/asio/write.hpp>
#include <boost/beast/websocket/error.hpp>

#include <algorithm>
#include <utility>

namespace brenvale::phone {
namespace {

namespace asio = boost::asio;
namespace websocket = boost::beast::websocket;

constexpr std::size_t writeBufferSize = std::size_t{64} * 1024;
constexpr qsizetype largestPing = 125;

QString errorText(const boost::system::error_code& error) {
    return QString::fromStdString(error.message());
}

asio::const_buffer bufferOf(const QByteArray& bytes) {
    return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

QString endOfLinkText(const boost::system::error_code& error) {
    if (error == websocket::error::closed) {
        return QStringLiteral("closed");
    }
    if (error == asio::error::eof) {
        return QStringLiteral("the desktop ended the connection without a goodbye");
    }
    return errorText(error);
}

} // namespace

PhoneConnection::PhoneConnection(asio::io_context& context, Events events)
    : resolver_(context), socket_(context), openingTimer_(context), events_(std::move(events)) {}

void PhoneConnection::open(const QString& host, quint16 port, std::chrono::milliseconds timeout,
                           Opened opened) {
    opened_ = std::move(opened);
    openingTimer_.expires_after(timeout);
    openingTimer_.async_wait([self = shared_from_this()](const Error& error) {
        if (!error) {
            self->finishOpening(std::unexpected(QStringLiteral("no answer in time")));
        }
    });
    resolver_.async_resolve(
        host.toStdString(), std::to_string(port),
        [self = shared_from_this(), name = host.toStdString()](const Error& error, const auto& endpoints) {
            if (error) {
                self->finishOpening(std::unexpected(errorText(error)));
            } else {
                self->connectTo(endpoints, name);
            }
        });
}

void PhoneConnection::connectTo(const Tcp::resolver::results_type& endpoints, const std::string& host) {
    if (state_ != State::Opening) {
        return;
    }
    asio::async_connect(socket_.next_layer(), endpoints,
                        [self = shared_from_this(), host](const Error& error, const Tcp::endpoint& endpoint) {
                            if (error) {
                                self->finishOpening(std::unexpected(errorText(error)));
                            } else {
                                self->shakeHands(host + ":" + std::to_string(endpoint.port()));
                            }
                        });
}

void PhoneConnection::shakeHands(const std::string& host) {
    if (state_ != State::Opening) {
        return;
    }
    Error ignored;
    socket_.next_layer().set_option(Tcp::no_delay(true), ignored);
    socket_.auto_fragment(false);
    socket_.read_message_max(0);
    socket_.write_buffer_bytes(writeBufferSize);
    socket_.control_callback([this](websocket::frame_type type, boost::beast::string_view payload) {
        onControlFrame(type, payload);
    });
    socket_.async_handshake(host, "/", [self = shared_from_this()](const Error& error) {
        if (error) {
            self->finishOpening(std::unexpected(errorText(error)));
        } else {
            self->finishOpening({});
        }
    });
}

void PhoneConnection::finishOpening(std::expected<void, QString> outcome) {
    if (state_ != State::Opening) {
        return;
    }
    openingTimer_.cancel();
    const auto opened = std::exchange(opened_, nullptr);
    if (outcome) {
        state_ = State::Open;
        opened(std::move(outcome));
        readOn();
        writeNext();
        return;
    }
    state_ = State::Closed;
    resolver_.cancel();
    Error ignored;
    socket_.next_layer().close(ignored);
    opened(std::move(outcome));
}

void PhoneConnection::pauseReading() {
    isReadingPaused_ = true;
}

void PhoneConnection::resumeReading() {
    isReadingPaused_ = false;
    readOn();
}

// A message is read in pieces, so that a pause takes hold in the middle of a large one too.
void PhoneConnection::readOn() {
    if (state_ != State::Open || isReading_ || isReadingPaused_) {
        return;
    }
    isReading_ = true;
    socket_.async_read_some(
        incoming_, 0, [self = shared_from_this()](const Error& error, std::size_t) { self->onRead(error); });
}

void PhoneConnection::onRead(const Error& error) {
    isReading_ = false;
    if (error) {
        // While we say goodbye, its own outcome tells how the link ended.
        if (outgoing_.empty() || outgoing_.front().kind != Outgoing::Kind::Close) {
            end(error);
        }
        return;
    }
    if (socket_.is_message_done()) {
        const auto bytes = incoming_.cdata();
        events_.message(
            QByteArray(static_cast<const char*>(bytes.data()), static_cast<qsizetype>(bytes.size())));
        incoming_.consume(incoming_.size());
    }
    readOn();
}

void PhoneConnection::onControlFrame(websocket::frame_type type, boost::beast::string_view payload) const {
    if (type == websocket::frame_type::pong) {
        events_.pong(QByteArray(payload.data(), static_cast<qsizetype>(payload.size())));
    }
}

void PhoneConnection::send(Outgoing outgoing) {
    if (state_ == State::Closed) {
        return;
    }
    outgoing_.push_back(std::move(outgoing));
    if (state_ == State::Open) {
        writeNext();
    }
}

void PhoneConnection::writeNext() {
    if (isWriting_ || outgoing_.empty()) {
        return;
    }
    isWriting_ = true;
    if (outgoing_.front().kind != Outgoing::Kind::Close) {
        writePart(0);
        return;
    }
    socket_.async_close(websocket::close_code::normal, [self = shared_from_this()](const Error& error) {
        self->end(error ? error : Error(websocket::error::closed));
    });
}

void PhoneConnection::writePart(qsizetype index) {
    const Outgoing& current = outgoing_.front();
    if (index >= current.parts.size()) {
        onWritten();
        return;
    }
    const QByteArray& part = current.parts.at(index);
    auto written = [self = shared_from_this(), index](const Error& error, std::size_t = 0) {
        self->onPartWritten(error, index);
    };
    switch (current.kind) {
    case Outgoing::Kind::Text:
    case Outgoing::Kind::Binary:
        socket_.binary(current.kind == Outgoing::Kind::Binary);
        socket_.async_write_some(index + 1 == current.parts.size(), bufferOf(part), std::move(written));
        break;
    case Outgoing::Kind::Prepared:
        // The desktop sends no pings, so the stack has no answers of its own to write in between.
        asio::async_write(socket_.next_layer(), bufferOf(part), std::move(written));
        break;
    case Outgoing::Kind::Ping:
        socket_.async_ping({part.constData(), static_cast<std::size_t>(std::min(part.size(), largestPing))},
                           std::move(written));
        break;
    case Outgoing::Kind::Close:
        break;
    }
}

void PhoneConnection::onPartWritten(const Error& error, qsizetype index) {
    if (state_ != State::Open) {
        return;
    }
    if (error) {
        // A link that has ended is told of by its reader, which knows the reason better.
        if (!isReading_) {
            end(error);
        }
        return;
    }
    writePart(index + 1);
}

void PhoneConnection::onWritten() {
    isWriting_ = false;
    const auto sent = std::move(outgoing_.front().sent);
    outgoing_.pop_front();
    if (sent) {
        sent();
    }
    writeNext();
}

void PhoneConnection::abort(const QString& reason) {
    if (state_ == State::Closed) {
        return;
    }
    Error ignored;
    socket_.next_layer().set_option(asio::socket_base::linger(true, 0), ignored);
    if (state_ == State::Opening) {
        finishOpening(std::unexpected(reason));
    } else {
        end(reason, false);
    }
}

void PhoneConnection::end(const Error& error) {
    end(endOfLinkText(error), error == websocket::error::closed);
}

void PhoneConnection::end(const QString& reason, bool isClean) {
    if (state_ == State::Closed) {
        return;
    }
    state_ = State::Closed;
    Error ignored;
    socket_.next_layer().close(ignored);
    events_.closed(reason, isClean);
}

} // namespace brenvale::phone
