#include "platform/linux/input/RemoteDesktopPortal.h"

#include "platform/DispatchQueue.h"
#include "platform/linux/input/ConsentMemory.h"
#include "platform/linux/input/PortalPlayer.h"
#include "platform/linux/input/PortalSession.h"
#include "platform/linux/input/TrackedPointer.h"

#include <QDBusConnection>
#include <QSocketNotifier>

#include <atomic>

namespace brenvale {

namespace {

const QString connectionName = QStringLiteral("brenvale-input");

} // namespace

/// What both sides see.
struct RemoteDesktopPortal::Shared {
    std::atomic<bool> isOpen = false;
    std::atomic<bool> canAsk = false;
    std::atomic<bool> hasNobodyToAsk = false;
    PostedEvents events;
    TrackedPointer pointer;
    Published<std::monostate> change; ///< on main
};

/// The thread's side.
class RemoteDesktopPortal::Worker final : public QObject {
public:
    Worker(std::shared_ptr<Shared> shared, DispatchQueue& main, TextLender* lender)
        : shared_(std::move(shared)), main_(main), lender_(lender) {}
    /// The desktop ends the session with the connection.
    ~Worker() override { QDBusConnection::disconnectFromBus(connectionName); }
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;

    void begin() {
        const auto bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, connectionName);
        if (!bus.isConnected()) {
            shared_->hasNobodyToAsk = !ConsentMemory::wasRefused();
            tellMain();
            return;
        }
        session_ = std::make_unique<PortalSession>(bus);
        player_ = std::make_unique<PortalPlayer>(bus, *session_, shared_->events, lender_);
        session_->changed = [this] {
            sessionChanged();
        };
        posted_ = std::make_unique<QSocketNotifier>(shared_->events.descriptor(), QSocketNotifier::Read);
        connect(posted_.get(), &QSocketNotifier::activated, this, [this] {
            shared_->events.acknowledge();
            player_->advance();
        });
    }

    void ask(Occasion occasion) {
        if (session_) {
            session_->open(occasion);
        }
    }

private:
    void sessionChanged() {
        using enum PortalSession::State;
        const auto state = session_->state();
        const bool isOpen = state == open;
        const bool wasOpen = shared_->isOpen;
        if (isOpen || wasOpen) {
            player_->end(); // what was let in while the session went
        }
        shared_->canAsk = state >= closed;
        shared_->hasNobodyToAsk = state == none && !ConsentMemory::wasRefused();
        shared_->isOpen = isOpen;
        if (isOpen) {
            player_->begin();
        }
        tellMain();
    }

    void tellMain() {
        main_.async([shared = std::weak_ptr(shared_)] {
            if (const auto held = shared.lock()) {
                held->change.set({});
            }
        });
    }

    std::shared_ptr<Shared> shared_;
    DispatchQueue& main_;
    TextLender* lender_;
    std::unique_ptr<PortalSession> session_;
    std::unique_ptr<PortalPlayer> player_;
    std::unique_ptr<QSocketNotifier> posted_;
};

RemoteDesktopPortal::RemoteDesktopPortal(DispatchQueue& main, TextLender* lender)
    : shared_(std::make_shared<Shared>()),
      thread_(std::make_unique<QThread>()),
      worker_(new Worker(shared_, main, lender)) { // NOLINT: the thread's end deletes it
    thread_->setObjectName(QStringLiteral("portal input"));
    worker_->moveToThread(thread_.get());
    QObject::connect(thread_.get(), &QThread::finished, worker_, &QObject::deleteLater);
    thread_->start();
    QMetaObject::invokeMethod(worker_, [worker = worker_] { worker->begin(); });
}

RemoteDesktopPortal::~RemoteDesktopPortal() {
    constexpr unsigned long patience = 2000;
    thread_->quit();
    if (!thread_->wait(patience)) {
        // It hangs in a bus that does not answer: its parts stay behind with it.
        [[maybe_unused]] const auto* hung = thread_.release();
    }
}

bool RemoteDesktopPortal::canMakeEvents() const {
    return shared_->isOpen;
}

QPointF RemoteDesktopPortal::pointerLocation() const {
    return shared_->pointer.location();
}

void RemoteDesktopPortal::post(const KeyEvent& event) {
    if (shared_->isOpen) {
        shared_->events.add(event);
    }
}

void RemoteDesktopPortal::post(const SystemDefinedEvent& event) {
    if (shared_->isOpen) {
        shared_->events.add(event);
    }
}

void RemoteDesktopPortal::post(const MouseEvent& event) {
    if (shared_->isOpen) {
        shared_->events.add(shared_->pointer.follow(event));
    }
}

bool RemoteDesktopPortal::canAsk() const {
    return shared_->canAsk;
}

bool RemoteDesktopPortal::hasNobodyToAsk() const {
    return shared_->hasNobodyToAsk;
}

void RemoteDesktopPortal::ask(Occasion occasion) {
    QMetaObject::invokeMethod(worker_, [worker = worker_, occasion] { worker->ask(occasion); });
}

Subscription RemoteDesktopPortal::observe(std::function<void()> observer) {
    return shared_->change.subscribe([observer = std::move(observer)](const auto&) { observer(); });
}

} // namespace brenvale
