#pragma once

#include "Phone.h"
#include "fakes/FakePlatform.h"
#include "link/LinkQueue.h"
#include "link/TcpListener.h"
#include "link/WebSocketServer.h"
#include "platform/MainQueue.h"
#include "records/HistoryStore.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QRandomGenerator>

#include <gtest/gtest.h>

#include <functional>
#include <mutex>

namespace brenvale {

/// The main queue in a hurry: a second of delay takes ten milliseconds.
class HurriedMainQueue final : public DispatchQueue {
public:
    void async(Step step) override { queue_.async(std::move(step)); }
    void asyncAfter(std::chrono::milliseconds delay, Step step) override {
        queue_.asyncAfter(delay / 100, std::move(step));
    }

private:
    MainQueue queue_;
};

/// Turns the event loop of the test until `condition` holds; false when it does not within a minute, which is
/// long enough under a sanitizer on a busy machine.
inline bool waitUntil(const std::function<bool()>& condition) {
    const QDeadlineTimer deadline(std::chrono::minutes(1));
    while (!condition()) {
        if (deadline.hasExpired()) {
            return false;
        }
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    }
    return true;
}

/// The real link on real sockets, with its own threads, over an in-memory desktop.
class LiveServer : public testing::Test {
protected:
    LiveServer() {
        server->historyStore = store;
        server->onStatusChange = [this](const QString& status) {
            const std::scoped_lock lock(mutex_);
            statuses_.append(status);
        };
        fake.userDefaults.set(QStringLiteral("port"), freePort());
    }

    /// Starts and waits for the port.
    void start() {
        server->start();
        ASSERT_TRUE(waitForStatus(listening()));
    }

    [[nodiscard]] QString listening() const { return QStringLiteral("listening on :%1").arg(server->port()); }

    [[nodiscard]] QStringList statuses() const {
        const std::scoped_lock lock(mutex_);
        return {statuses_.begin(),
                statuses_.end()}; // a list of its own: the original grows in another thread
    }

    [[nodiscard]] bool waitForStatus(const QString& status) const {
        return waitUntil([&] { return statuses().contains(status); });
    }

    [[nodiscard]] bool waitForLog(const QByteArray& part, qsizetype count = 1) const {
        return waitUntil([&] { return fake.log.count(part) >= count; });
    }

    /// Connects and takes the greeting.
    void greet(Phone& phone) {
        const auto connected = phone.connect(QStringLiteral("127.0.0.1"), server->port());
        ASSERT_TRUE(connected.has_value()) << connected.error().toStdString();
        ASSERT_TRUE(phone.waitForMessage().has_value());
    }

    /// A port that nothing uses now.
    static quint16 freePort();

    int argumentCount = 1;
    char name[5] = "test";
    char* arguments[1] = {name};
    QCoreApplication application{argumentCount, arguments};
    FakePlatform fake;
    HurriedMainQueue main;
    std::shared_ptr<HistoryStore> store = std::make_shared<HistoryStore>();
    LinkQueue queue;
    TcpTransport transport{queue};
    std::shared_ptr<WebSocketServer> server =
        std::make_shared<WebSocketServer>(fake.platform, transport, queue, main);

private:
    mutable std::mutex mutex_;
    QStringList statuses_;
};

inline quint16 LiveServer::freePort() {
    boost::asio::io_context context;
    boost::system::error_code error;
    quint16 port = 0;
    do { // below those that the system hands out to connections
        port = static_cast<quint16>(QRandomGenerator::global()->bounded(10'000, 32'000));
        boost::asio::ip::tcp::acceptor probe(context);
        probe.open(boost::asio::ip::tcp::v6());
        probe.bind({boost::asio::ip::tcp::v6(), port}, error);
    } while (error);
    return port;
}

} // namespace brenvale
