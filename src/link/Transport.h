#pragma once

#include "link/MessageBuffer.h"
#include "link/OutgoingText.h"

#include <QByteArray>
#include <QString>

#include <expected>
#include <functional>
#include <memory>
#include <optional>

namespace brenvale {

/// The far end of a connection.
struct Endpoint {
    QByteArray text;             ///< as log lines show it, such as "192.168.1.7:40312"
    std::optional<QString> host; ///< without the port; nothing where the peer has no address
};

/// One accepted WebSocket connection: handshake, framing and answers to pings are its own business. All calls
/// and all callbacks are on the link's queue, and no callback runs before the call that causes it has
/// returned.
class Connection {
public:
    enum class State { preparing, ready, failed, cancelled };

    struct StateReport {
        State state;
        QByteArray error; ///< why it failed
    };

    /// One delivery of a message: any of the three may come together.
    struct Delivery {
        std::optional<MessageBuffer> data;
        bool isWebSocketMessage = false; ///< the bytes came with WebSocket metadata
        bool isComplete = false;         ///< the message ends with these bytes
        QByteArray error;                ///< empty without an error
    };

    using ReceiveHandler = std::move_only_function<void(Delivery)>;
    using SendCompletion = std::move_only_function<void(const QByteArray& error)>;

    virtual ~Connection() = default;

    [[nodiscard]] virtual const Endpoint& endpoint() const = 0;

    /// Begins the handshake. `stateUpdateHandler` is set before.
    virtual void start() = 0;

    /// Turns the peer away instead of `start`; reported as `failed` with that reason.
    virtual void refuse(const QByteArray& reason) = 0;

    /// Drops the connection at once; reported as `cancelled`. Nothing else is reported of it afterwards.
    virtual void cancel() = 0;

    /// Calls `handler` once with the next delivery. One receive is outstanding at a time.
    virtual void receiveMessage(ReceiveHandler handler) = 0;

    /// Queues one text message, which all connections that it is sent on share. Before the handshake is over
    /// it waits. `completion` gets an empty text when the bytes have been handed to the system.
    virtual void send(std::shared_ptr<const OutgoingText> text, SendCompletion completion) = 0;

    /// Finds out whether the peer is there still. One that gives no sign of life within some ten seconds is
    /// reported as `failed`.
    virtual void checkPeer() = 0;

    std::function<void(const StateReport&)> stateUpdateHandler;
};

/// A listening socket. All calls and callbacks are on the link's queue.
class Listener {
public:
    enum class State { ready, failed, cancelled };

    struct StateReport {
        State state;
        QString error; ///< why it failed
    };

    virtual ~Listener() = default;

    virtual void start() = 0;

    /// Stops listening; reported as `cancelled`.
    virtual void cancel() = 0;

    std::function<void(const StateReport&)> stateUpdateHandler;
    std::function<void(std::shared_ptr<Connection>)> newConnectionHandler;
};

/// Makes listeners.
class Transport {
public:
    virtual ~Transport() = default;

    /// A listener for `port` on all interfaces, or why none can be made at all. It binds when it is started.
    /// Any thread.
    [[nodiscard]] virtual std::expected<std::shared_ptr<Listener>, QString> makeListener(quint16 port) = 0;
};

} // namespace brenvale
