#pragma once

#include "link/LinkSocket.h"
#include "link/Transport.h"

#include <boost/asio/steady_timer.hpp>
#include <boost/beast/websocket/stream.hpp>

#include <deque>
#include <string>

namespace brenvale {

/// A connection over TCP and WebSocket (RFC 6455, version 13, no extensions). A queue of its own feeds the
/// socket, so a phone that does not read delays nobody else. A silent peer is given up within about two
/// minutes by TCP's own means, within ten seconds when it is looked for; a handshake that does not come after
/// 30 seconds.
class WebSocketConnection final : public Connection,
                                  public std::enable_shared_from_this<WebSocketConnection> {
public:
    explicit WebSocketConnection(boost::asio::ip::tcp::socket&& accepted);

    [[nodiscard]] const Endpoint& endpoint() const override { return endpoint_; }
    void start() override;
    void refuse(const QByteArray& reason) override;
    void cancel() override;
    void receiveMessage(ReceiveHandler handler) override;
    void send(std::shared_ptr<const OutgoingText> text, SendCompletion completion) override;
    void checkPeer() override;

private:
    using Stream = boost::beast::websocket::stream<LinkSocket, false>;

    struct Outgoing {
        std::shared_ptr<const OutgoingText> text;
        SendCompletion completion;
    };

    [[nodiscard]] boost::asio::ip::tcp::socket& socket() { return stream_.next_layer().socket(); }
    void readRequest();
    void answerRequest();
    void sendAnswer(std::string answer, const QByteArray& refusal);
    void endAfterRest(const QByteArray& refusal);
    void opened();
    [[nodiscard]] MessageBuffer takeIncoming();
    void writeNext();
    void startWriting();
    void completeFront(const QByteArray& error);
    void end(State state, const QByteArray& error);
    void failPendingSends();

    Stream stream_;
    Endpoint endpoint_;
    boost::asio::steady_timer handshakeDeadline_;
    boost::asio::steady_timer peerDeadline_; ///< of `checkPeer`
    std::string request_;                    ///< the handshake's bytes
    std::string answer_;                     ///< what it is answered
    MessageBuffer incoming_;
    std::deque<Outgoing> outgoing_; ///< the head is being written while `isWriting_`
    QByteArray writing_;            ///< the head's bytes while `isWriting_`
    bool isOpen_ = false;
    bool isWriting_ = false;
    bool isEnded_ = false;
};

} // namespace brenvale
