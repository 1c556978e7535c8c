#pragma once

#include "link/Transport.h"
#include "platform/DispatchQueue.h"

#include <utility>
#include <vector>

namespace brenvale {

/// A connection whose far end is the test. Reports run as steps of the queue, as real ones do.
class FakeConnection final : public Connection, public std::enable_shared_from_this<FakeConnection> {
public:
    FakeConnection(DispatchQueue& queue, Endpoint endpoint) : queue_(queue), endpoint_(std::move(endpoint)) {}

    [[nodiscard]] const Endpoint& endpoint() const override { return endpoint_; }
    void start() override { report({State::preparing, {}}); }
    void refuse(const QByteArray& reason) override { report({State::failed, reason}); }
    void cancel() override {
        isCancelled = true;
        report({State::cancelled, {}});
    }
    void checkPeer() override { ++peerChecks; }
    void receiveMessage(ReceiveHandler handler) override {
        ++receives;
        handler_ = std::move(handler);
    }
    void send(std::shared_ptr<const OutgoingText> text, SendCompletion completion) override {
        sent.push_back(text->bytes());
        if (completion) {
            queue_.async([this, self = shared_from_this(), completion = std::move(completion)]() mutable {
                completion(sendError);
            });
        }
    }

    void report(const StateReport& state) {
        queue_.async([self = shared_from_this(), state] { self->stateUpdateHandler(state); });
    }
    void deliver(Delivery delivery) {
        queue_.async([self = shared_from_this(), delivery = std::move(delivery)]() mutable {
            std::exchange(self->handler_, {})(std::move(delivery));
        });
    }
    void deliver(std::string_view message) {
        deliver({.data = MessageBuffer(message), .isWebSocketMessage = true, .isComplete = true});
    }

    /// Lets go of the outstanding receive, which holds this connection, as a real one does at its end.
    void drop() { handler_ = {}; }

    [[nodiscard]] bool isReceiveArmed() const { return static_cast<bool>(handler_); }

    std::vector<QByteArray> sent;
    QByteArray sendError;
    int receives = 0;
    int peerChecks = 0;
    bool isCancelled = false;

private:
    DispatchQueue& queue_;
    Endpoint endpoint_;
    ReceiveHandler handler_;
};

class FakeListener final : public Listener, public std::enable_shared_from_this<FakeListener> {
public:
    explicit FakeListener(DispatchQueue& queue) : queue_(queue) {}

    void start() override { isStarted = true; }
    void cancel() override {
        isCancelled = true;
        report({State::cancelled, {}});
    }

    void report(const StateReport& state) {
        queue_.async([self = shared_from_this(), state] { self->stateUpdateHandler(state); });
    }

    bool isStarted = false;
    bool isCancelled = false;

private:
    DispatchQueue& queue_;
};

class FakeTransport final : public Transport {
public:
    explicit FakeTransport(DispatchQueue& queue) : queue_(queue) {}
    FakeTransport(const FakeTransport&) = delete;
    FakeTransport& operator=(const FakeTransport&) = delete;

    [[nodiscard]] std::expected<std::shared_ptr<Listener>, QString> makeListener(quint16 port) override {
        ports.push_back(port);
        if (!error.isEmpty()) {
            return std::unexpected(error);
        }
        listeners.push_back(std::make_shared<FakeListener>(queue_));
        return listeners.back();
    }

    ~FakeTransport() override {
        for (const auto& connection : connections_) {
            connection->drop();
        }
    }

    /// A phone that connects to the newest listener, before its handshake.
    std::shared_ptr<FakeConnection> connect(const QByteArray& host = "192.168.1.7", quint16 port = 40312) {
        return connect(Endpoint{host + ":" + QByteArray::number(port), QString::fromUtf8(host)});
    }
    std::shared_ptr<FakeConnection> connect(Endpoint endpoint) {
        auto connection = std::make_shared<FakeConnection>(queue_, std::move(endpoint));
        connections_.push_back(connection);
        queue_.async(
            [listener = listeners.back(), connection] { listener->newConnectionHandler(connection); });
        return connection;
    }

    std::vector<quint16> ports;
    std::vector<std::shared_ptr<FakeListener>> listeners;
    QString error; ///< when set, no listener can be made

private:
    DispatchQueue& queue_;
    std::vector<std::shared_ptr<FakeConnection>> connections_;
};

} // namespace brenvale
