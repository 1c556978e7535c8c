#pragma once

#include "fakes/FakePlatform.h"
#include "fakes/FakeTransport.h"
#include "fakes/StepQueue.h"
#include "link/WebSocketServer.h"
#include "records/HistoryStore.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace brenvale {

/// A server with its store over the in-memory platform, both queues stepped by hand.
struct TestServer {
    TestServer();
    ~TestServer();
    TestServer(const TestServer&) = delete;
    TestServer& operator=(const TestServer&) = delete;

    /// Runs both queues until nothing waits on either.
    void run();

    /// Starts the server and connects a phone up to the greeting.
    std::shared_ptr<FakeConnection> connectPhone();

    /// Delivers one complete message from a phone and lets it take effect.
    void receive(std::string_view message);

    /// Title and body of every notification so far, "title: body".
    [[nodiscard]] std::vector<std::string> notifications() const;

    /// The log without the lines that tell of connections and of sizes.
    [[nodiscard]] QByteArrayList dispatchLog() const;

    FakePlatform fake;
    StepQueue queue;
    StepQueue main;
    FakeTransport transport{queue};
    std::shared_ptr<HistoryStore> store;
    std::shared_ptr<WebSocketServer> server;
    std::shared_ptr<FakeConnection> phone;
    QStringList statuses;
};

} // namespace brenvale
