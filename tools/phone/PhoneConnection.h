#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/websocket/stream.hpp>

#include <chrono>
#include <deque>
#include <expected>
#include <functional>
#include <memory>

namespace brenvale::phone {

/// One thing to write, in its turn.
struct Outgoing {
    enum class Kind : quint8 { Text, Binary, Prepared, Ping, Close };

    Kind kind = Kind::Text;
    QList<QByteArray> parts;    ///< frames of one message; one part for all kinds but text
    std::function<void()> sent; ///< optional, runs when the system's socket has it all
};

/// One link to the desktop over Beast. Lives on the phone's thread: every function is called there and every
/// event comes there. It keeps itself alive while an operation is under way.
class PhoneConnection : public std::enable_shared_from_this<PhoneConnection> {
public:
    using Opened = std::function<void(std::expected<void, QString>)>;

    struct Events {
        std::function<void(QByteArray message)> message;
        std::function<void(QByteArray payload)> pong;
        /// Once, and only after a good open. Clean is an end by the goodbyes of both sides.
        std::function<void(const QString& reason, bool isClean)> closed;
    };

    PhoneConnection(boost::asio::io_context& context, Events events);

    /// Looks up the host, connects and shakes hands; opened hears the outcome once.
    void open(const QString& host, quint16 port, std::chrono::milliseconds timeout, Opened opened);

    void send(Outgoing outgoing);
    void pauseReading();
    void resumeReading();

    /// Cuts the link; the peer sees a reset.
    void abort(const QString& reason);

private:
    using Tcp = boost::asio::ip::tcp;
    using Error = boost::system::error_code;
    enum class State : quint8 { Opening, Open, Closed };

    void connectTo(const Tcp::resolver::results_type& endpoints, const std::string& host);
    void shakeHands(const std::string& host);
    void finishOpening(std::expected<void, QString> outcome);

    void readOn();
    void onRead(const Error& error);
    void onControlFrame(boost::beast::websocket::frame_type type, boost::beast::string_view payload) const;

    void writeNext();
    void writePart(qsizetype index);
    void onPartWritten(const Error& error, qsizetype index);
    void onWritten();

    void end(const Error& error);
    void end(const QString& reason, bool isClean);

    Tcp::resolver resolver_;
    boost::beast::websocket::stream<Tcp::socket> socket_;
    boost::asio::steady_timer openingTimer_;
    Events events_;
    Opened opened_;
    State state_ = State::Opening;

    boost::beast::flat_buffer incoming_;
    bool isReading_ = false;
    bool isReadingPaused_ = false;

    std::deque<Outgoing> outgoing_; ///< the first one is being written while isWriting_
    bool isWriting_ = false;
};

} // namespace brenvale::phone
