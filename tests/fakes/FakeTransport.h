#pragma once

#include "link/Transport.h"
#include "platform/DispatchQueue.h"

#include <memory>
#include <string_view>
#include <vector>

namespace brenvale {

/// A connection whose far end is the test. Reports run as steps of the queue, as real ones do.
class FakeConnection final : public Connection, public std::enable_shared_from_this<FakeConnection> {
public:
    FakeConnection(DispatchQueue& queue, Endpoint endpoint);
    ~FakeConnection() override;
    FakeConnection(const FakeConnection&) = delete;
    FakeConnection& operator=(const FakeConnection&) = delete;

    [[nodiscard]] const Endpoint& endpoint() const override { return endpoint_; }
    void start() override;
    void refuse(const QByteArray& reason) override;
    void cancel() override;
    void checkPeer() override { ++peerChecks; }
    void receiveMessage(ReceiveHandler handler) override;
    void send(std::shared_ptr<const OutgoingText> text, SendCompletion completion) override;

    void report(const StateReport& state);
    void deliver(Delivery delivery);
    void deliver(std::string_view message);

    /// Lets go of the outstanding receive, which holds this connection, as a real one does at its end.
    void drop();

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
    void cancel() override;
    void report(const StateReport& state);

    bool isStarted = false;
    bool isCancelled = false;

private:
    DispatchQueue& queue_;
};

class FakeTransport final : public Transport {
public:
    explicit FakeTransport(DispatchQueue& queue);
    ~FakeTransport() override;
    FakeTransport(const FakeTransport&) = delete;
    FakeTransport& operator=(const FakeTransport&) = delete;

    [[nodiscard]] std::expected<std::shared_ptr<Listener>, QString> makeListener(quint16 port) override;

    /// A phone that connects to the newest listener, before its handshake.
    std::shared_ptr<FakeConnection> connect(const QByteArray& host = "192.168.1.7", quint16 port = 40312);
    std::shared_ptr<FakeConnection> connect(Endpoint endpoint);

    std::vector<quint16> ports;
    std::vector<std::shared_ptr<FakeListener>> listeners;
    QString error; ///< when set, no listener can be made

private:
    DispatchQueue& queue_;
    std::vector<std::shared_ptr<FakeConnection>> connections_;
};

} // namespace brenvale
