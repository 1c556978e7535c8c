#include "fakes/TestServer.h"

namespace brenvale {

TestServer::TestServer()
    : store(std::make_shared<HistoryStore>()),
      server(std::make_shared<WebSocketServer>(fake.platform, transport, queue, main)) {
    server->historyStore = store;
    server->onStatusChange = [this](const QString& status) {
        statuses.append(status);
    };
}

TestServer::~TestServer() = default;

void TestServer::run() {
    while (!queue.isEmpty() || !main.isEmpty()) {
        queue.run();
        main.run();
    }
}

std::shared_ptr<FakeConnection> TestServer::connectPhone() {
    if (transport.listeners.empty()) {
        server->start();
        run();
    }
    auto connection = transport.connect();
    run();
    connection->report({Connection::State::ready, {}});
    run();
    return connection;
}

void TestServer::receive(std::string_view message) {
    if (!phone) {
        phone = connectPhone();
    }
    phone->deliver(message);
    run();
}

std::vector<std::string> TestServer::notifications() const {
    std::vector<std::string> texts;
    texts.reserve(fake.userNotificationCenter.added.size());
    for (const auto& request : fake.userNotificationCenter.added) {
        texts.push_back((request.content.title + QStringLiteral(": ") + request.content.body).toStdString());
    }
    return texts;
}

QByteArrayList TestServer::dispatchLog() const {
    QByteArrayList lines;
    for (const auto& line : fake.log.lines()) {
        if (!line.contains("onnection ") && !line.contains("Received complete message")) {
            lines.append(line);
        }
    }
    return lines;
}

} // namespace brenvale
