#include "link/WebSocketServer.h"

#include "link/Json.h"
#include "link/WireText.h"
#include "notifications/NotificationManager.h"
#include "platform/ComputerName.h"
#include "platform/DispatchQueue.h"
#include "platform/Fatal.h"
#include "platform/Log.h"
#include "platform/Platform.h"
#include "platform/StandardError.h"
#include "platform/UserDefaults.h"
#include "records/HistoryStore.h"

#include <algorithm>

namespace brenvale {

using namespace std::chrono_literals;

namespace {

constexpr auto retryDelay = 5s;

std::shared_ptr<WebSocketServer>& sharedServer() {
    static std::shared_ptr<WebSocketServer> server;
    return server;
}

QByteArray stateName(const Connection::StateReport& report) {
    switch (report.state) {
    case Connection::State::preparing:
        return "preparing";
    case Connection::State::ready:
        return "ready";
    case Connection::State::failed:
        return "failed(" + report.error + ")";
    case Connection::State::cancelled:
        return "cancelled";
    }
    return {};
}

} // namespace

WebSocketServer& WebSocketServer::shared() {
    return *sharedServer();
}

void WebSocketServer::setShared(std::shared_ptr<WebSocketServer> server) {
    sharedServer() = std::move(server);
}

WebSocketServer::WebSocketServer(Platform& platform, Transport& transport, DispatchQueue& queue,
                                 DispatchQueue& main)
    : platform_(platform),
      transport_(transport),
      queue_(queue),
      main_(main),
      notificationManager_(std::make_shared<NotificationManager>(platform.userNotificationCenter,
                                                                 platform.clock, platform.log)) {
    link_.reader = std::make_unique<JsonReader>();
}

WebSocketServer::~WebSocketServer() = default;

quint16 WebSocketServer::port() const {
    const auto value = platform_.userDefaults.integer(u"port");
    if (value <= 0) {
        return 8765;
    }
    if (value > 65535) {
        fatal("Not enough bits to represent the passed value");
    }
    return static_cast<quint16>(value);
}

void WebSocketServer::start() {
    stop();
    auto listener = transport_.makeListener(port());
    if (!listener) {
        reportStatus(QStringLiteral("error: ") + listener.error());
        return;
    }
    listener_ = *listener;
    listener_->stateUpdateHandler = [weak = weak_from_this()](const Listener::StateReport& report) {
        if (const auto self = weak.lock()) {
            self->listenerChanged(report);
        }
    };
    listener_->newConnectionHandler = [weak = weak_from_this()](const ConnectionPointer& connection) {
        if (const auto self = weak.lock()) {
            self->accept(connection);
        }
    };
    onQueue([listener = listener_, rules = readAccessRules()](WebSocketServer& self) mutable {
        self.link_.access = std::move(rules);
        listener->start();
    });
}

AccessRules WebSocketServer::readAccessRules() const {
    const auto sections = platform_.userDefaults.sections();
    auto rules = sections ? accessRulesOf(*sections) : std::unexpected(sections.error());
    if (!rules) { // never open by mistake
        complain("Brenvale: nobody may connect: " + rules.error().toUtf8());
        return AccessRules::nobody();
    }
    return *std::move(rules);
}

void WebSocketServer::stop() {
    // One step on the queue, so that `connections` stays the queue's alone. The phones' ends are reported
    // before the listener's, as people expect of a restart.
    onQueue([listener = std::exchange(listener_, nullptr)](WebSocketServer& self) {
        for (const auto& connection : std::exchange(self.link_.connections, {})) {
            connection->cancel();
        }
        if (listener) {
            listener->cancel();
        }
    });
    postToMain([](HistoryStore* store) {
        if (store != nullptr) {
            store->availableSIMs.set({});
        }
    });
}

void WebSocketServer::checkConnections() {
    onQueue([](WebSocketServer& self) {
        for (const auto& connection : self.link_.connections) {
            connection->checkPeer();
        }
    });
}

void WebSocketServer::listenerChanged(const Listener::StateReport& report) {
    switch (report.state) {
    case Listener::State::ready:
        reportStatus(QStringLiteral("listening on :") + QString::number(port()));
        break;
    case Listener::State::failed:
        reportStatus(QStringLiteral("failed – ") + report.error);
        main_.asyncAfter(retryDelay, [weak = weak_from_this()] {
            if (const auto self = weak.lock()) {
                self->start();
            }
        });
        break;
    case Listener::State::cancelled:
        reportStatus(QStringLiteral("stopped"));
        break;
    }
}

void WebSocketServer::accept(const ConnectionPointer& connection) {
    platform_.log.line("[WebSocketServer] Incoming connection from " + connection->endpoint().text);
    link_.connections.push_back(connection);
    connection->stateUpdateHandler = [weak = weak_from_this(), weakConnection = std::weak_ptr(connection)](
                                         const Connection::StateReport& report) {
        const auto self = weak.lock();
        const auto strong = weakConnection.lock();
        if (self && strong) {
            self->connectionChanged(strong, report);
        }
    };
    const auto& host = connection->endpoint().host;
    if (link_.access.admits(host ? host->toStdString() : std::string())) {
        connection->start();
    } else {
        connection->refuse("address not allowed");
    }
}

void WebSocketServer::connectionChanged(const ConnectionPointer& connection,
                                        const Connection::StateReport& report) {
    logOf(*connection, "Connection ", " state changed to " + stateName(report));
    switch (report.state) {
    case Connection::State::preparing:
        break;
    case Connection::State::ready:
        greet(connection);
        break;
    case Connection::State::failed:
        logOf(*connection, "Connection ", " failed: " + report.error);
        remove(connection);
        break;
    case Connection::State::cancelled:
        logOf(*connection, "Connection ", " cancelled");
        remove(connection);
        break;
    }
}

void WebSocketServer::greet(const ConnectionPointer& connection) {
    logOf(*connection, "Connection ", " is ready (handshake complete)");
    if (const auto& host = connection->endpoint().host) {
        onStore([host](HistoryStore& store) { store.connectedRemoteIP.set(host); });
    }
    receive(connection);
    auto name = platform_.computerName.localizedName();
    if (name.isEmpty()) {
        name = QStringLiteral("Mac");
    }
    connection->send(makeOutgoingText(connectedGreeting(name)), {});
}

void WebSocketServer::receive(const ConnectionPointer& connection) {
    connection->receiveMessage([weak = weak_from_this(), connection](Connection::Delivery delivery) {
        if (const auto self = weak.lock()) {
            self->received(connection, std::move(delivery));
        }
    });
}

void WebSocketServer::received(const ConnectionPointer& connection, Connection::Delivery delivery) {
    auto& buffer = link_.connectionBuffers[connection.get()];
    if (delivery.data && buffer.empty()) {
        buffer = *std::move(delivery.data);
    } else if (delivery.data) {
        buffer.append(delivery.data->text());
    }
    if (!delivery.error.isEmpty()) {
        logOf(*connection, "Receive error from ", ": " + delivery.error);
        link_.connectionBuffers.erase(connection.get());
        return;
    }
    if (!delivery.isComplete) {
        receive(connection);
        return;
    }
    const auto message = std::exchange(buffer, {});
    const auto stepsBefore = link_.stepsForMain;
    if (!message.empty()) {
        logOf(*connection,
              "Received complete message of " + QByteArray::number(static_cast<qulonglong>(message.size())) +
                  " bytes from ",
              {});
        if (delivery.isWebSocketMessage) {
            link_.bytesForMain = message.size();
            handle(message);
        }
    }
    receiveAgain(connection, link_.stepsForMain > stepsBefore);
}

void WebSocketServer::receiveAgain(const ConnectionPointer& connection, bool hasLeftSteps) {
    auto& backlog = link_.backlogs[connection.get()];
    if (hasLeftSteps) {
        backlog.posted(link_.bytesForMain);
        markBacklog(connection, backlog);
    }
    if (backlog.isFull()) {
        backlog.setWaiting(true);
    } else {
        receive(connection);
    }
}

void WebSocketServer::markBacklog(const ConnectionPointer& connection, MainBacklog& backlog) {
    if (!backlog.takeMark()) {
        return;
    }
    postToMain([weak = weak_from_this(), weakConnection = std::weak_ptr(connection)](HistoryStore*) {
        if (const auto self = weak.lock()) {
            self->onQueue([weakConnection](WebSocketServer& server) {
                if (const auto strong = weakConnection.lock()) {
                    server.mainCaughtUp(strong);
                }
            });
        }
    });
}

void WebSocketServer::mainCaughtUp(const ConnectionPointer& connection) {
    const auto entry = link_.backlogs.find(connection.get());
    if (entry == link_.backlogs.end()) {
        return; // removed meanwhile
    }
    auto& backlog = entry->second;
    backlog.markRan();
    markBacklog(connection, backlog);
    if (!backlog.isFull() && backlog.setWaiting(false)) {
        receive(connection);
    }
}

void WebSocketServer::send(QByteArray text) {
    sendText(makeOutgoingText(std::move(text)));
}

void WebSocketServer::sendText(std::shared_ptr<const OutgoingText> text) {
    onQueue([text = std::move(text)](WebSocketServer& self) {
        for (const auto& connection : self.link_.connections) {
            connection->send(text, [&log = self.platform_.log](const QByteArray& error) {
                if (!error.isEmpty()) {
                    log.line("Send error: " + error);
                }
            });
        }
    });
}

void WebSocketServer::remove(const ConnectionPointer& connection) {
    std::erase(link_.connections, connection);
    link_.connectionBuffers.erase(connection.get());
    link_.backlogs.erase(connection.get());
    if (!link_.connections.empty()) {
        return;
    }
    onStore([](HistoryStore& store) {
        store.availableSIMs.set({});
        store.connectedRemoteIP.set({});
        store.connectedWifiName.set({});
        store.connectedDeviceName.set({});
    });
}

void WebSocketServer::reportStatus(const QString& status) const {
    if (onStatusChange) {
        onStatusChange(status);
    }
}

void WebSocketServer::logOf(const Connection& connection, QByteArrayView before, QByteArrayView after) const {
    QByteArray line = "[WebSocketServer] ";
    line += before;
    line += connection.endpoint().text;
    line += after;
    platform_.log.line(line);
}

void WebSocketServer::onMain(StoreStep step) {
    ++link_.stepsForMain;
    postToMain(std::move(step));
}

void WebSocketServer::postToMain(StoreStep step) {
    main_.async([weak = weak_from_this(), step = std::move(step)]() mutable {
        const auto self = weak.lock();
        const auto store = self ? self->historyStore.lock() : nullptr;
        step(store.get());
    });
}

void WebSocketServer::onStore(std::move_only_function<void(HistoryStore&)> step) {
    onMain([step = std::move(step)](HistoryStore* store) mutable {
        if (store != nullptr) {
            step(*store);
        }
    });
}

void WebSocketServer::onQueue(std::move_only_function<void(WebSocketServer&)> step) {
    queue_.async([weak = weak_from_this(), step = std::move(step)]() mutable {
        if (const auto self = weak.lock()) {
            step(*self);
        }
    });
}

} // namespace brenvale
