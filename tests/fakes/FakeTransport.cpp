#include "fakes/FakeTransport.h"

#include <utility>

namespace brenvale {

FakeConnection::FakeConnection(DispatchQueue& queue, Endpoint endpoint)
    : queue_(queue), endpoint_(std::move(endpoint)) {}

FakeConnection::~FakeConnection() = default;

void FakeConnection::start() {
    report({State::preparing, {}});
}

void FakeConnection::refuse(const QByteArray& reason) {
    report({State::failed, reason});
}

void FakeConnection::cancel() {
    isCancelled = true;
    report({State::cancelled, {}});
}

void FakeConnection::receiveMessage(ReceiveHandler handler) {
    ++receives;
    handler_ = std::move(handler);
}

void FakeConnection::send(std::shared_ptr<const OutgoingText> text, SendCompletion completion) {
    sent.push_back(text->bytes());
    if (completion) {
        queue_.async([this, self = shared_from_this(), completion = std::move(completion)]() mutable {
            completion(sendError);
        });
    }
}

void FakeConnection::report(const StateReport& state) {
    queue_.async([self = shared_from_this(), state] { self->stateUpdateHandler(state); });
}

void FakeConnection::deliver(Delivery delivery) {
    queue_.async([self = shared_from_this(), delivery = std::move(delivery)]() mutable {
        std::exchange(self->handler_, {})(std::move(delivery));
    });
}

void FakeConnection::deliver(std::string_view message) {
    deliver({.data = MessageBuffer(message), .isWebSocketMessage = true, .isComplete = true});
}

void FakeConnection::drop() {
    handler_ = {};
}

void FakeListener::cancel() {
    isCancelled = true;
    report({State::cancelled, {}});
}

void FakeListener::report(const StateReport& state) {
    queue_.async([self = shared_from_this(), state] { self->stateUpdateHandler(state); });
}

FakeTransport::FakeTransport(DispatchQueue& queue) : queue_(queue) {}

FakeTransport::~FakeTransport() {
    for (const auto& connection : connections_) {
        connection->drop();
    }
}

std::expected<std::shared_ptr<Listener>, QString> FakeTransport::makeListener(quint16 port) {
    ports.push_back(port);
    if (!error.isEmpty()) {
        return std::unexpected(error);
    }
    listeners.push_back(std::make_shared<FakeListener>(queue_));
    return listeners.back();
}

std::shared_ptr<FakeConnection> FakeTransport::connect(const QByteArray& host, quint16 port) {
    return connect(Endpoint{host + ":" + QByteArray::number(port), QString::fromUtf8(host)});
}

std::shared_ptr<FakeConnection> FakeTransport::connect(Endpoint endpoint) {
    auto connection = std::make_shared<FakeConnection>(queue_, std::move(endpoint));
    connections_.push_back(connection);
    queue_.async([listener = listeners.back(), connection] { listener->newConnectionHandler(connection); });
    return connection;
}

} // namespace brenvale
