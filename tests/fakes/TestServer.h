#pragma once

#include "fakes/FakePlatform.h"
#include "fakes/FakeTransport.h"
#include "fakes/StepQueue.h"
#include "link/WebSocketServer.h"
#include "records/HistoryStore.h"

#include <string>
#include <vector>

namespace brenvale {

/// A server with its store over the in-memory platform, both queues stepped by hand.
struct TestServer {
    TestServer() {
        server->historyStore = store;
        server->onStatusChange = [this](const QString& status) {
            statuses.append(status);
        };
    }

    /// Runs both queues until nothing waits on either.
    void run() {
        while (!queue.isEmpty() || !main.isEmpty()) {
            queue.run();
            main.run();
        }
    }

    /// Starts the server and connects a phone up to the greeting.
    std::shared_ptr<FakeConnection> connectPhone() {
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

    /// Delivers one complete message from a phone and lets it take effect.
    void receive(std::string_view message) {
        if (!phone) {
            phone = connectPhone();
        }
        phone->deliver(message);
        run();
    }

    /// Title and body of every notification so far, "title: body".
    [[nodiscard]] std::vector<std::string> notifications() const {
        std::vector<std::string> texts;
        texts.reserve(fake.userNotificationCenter.added.size());
        for (const auto& request : fake.userNotificationCenter.added) {
            texts.push_back(
                (request.content.title + QStringLiteral(": ") + request.content.body).toStdString());
        }
        return texts;
    }

    /// The log without the lines that tell of connections and of sizes.
    [[nodiscard]] QByteArrayList dispatchLog() const {
        QByteArrayList lines;
        for (const auto& line : fake.log.lines()) {
            if (!line.contains("onnection ") && !line.contains("Received complete message")) {
                lines.append(line);
            }
        }
        return lines;
    }

    FakePlatform fake;
    StepQueue queue;
    StepQueue main;
    FakeTransport transport{queue};
    std::shared_ptr<HistoryStore> store = std::make_shared<HistoryStore>();
    std::shared_ptr<WebSocketServer> server =
        std::make_shared<WebSocketServer>(fake.platform, transport, queue, main);
    std::shared_ptr<FakeConnection> phone;
    QStringList statuses;
};

} // namespace brenvale
