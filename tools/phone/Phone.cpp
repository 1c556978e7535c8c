#include "Phone.h"

#include "PhoneConnection.h"

#include <boost/asio/executor_work_guard.hpp>
#include <boost/asio/post.hpp>

#include <pthread.h>

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>
#include <utility>

namespace brenvale {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds graceAfterAbort{1000};

/// A value that one thread waits for and another brings, once. Shared by both, as the wait may be given up.
template <class Value>
class Answer {
public:
    void bring(Value value) {
        {
            const std::scoped_lock lock(mutex_);
            value_ = std::move(value);
        }
        brought_.notify_all();
    }

    std::optional<Value> waitFor(milliseconds timeout) {
        std::unique_lock lock(mutex_);
        brought_.wait_for(lock, timeout, [this] { return value_.has_value(); });
        return value_;
    }

private:
    std::mutex mutex_;
    std::condition_variable brought_;
    std::optional<Value> value_;
};

} // namespace

/// The thread, the link of the moment and what the waiting functions look at.
class Phone::Core {
public:
    Core();
    ~Core();
    Core(const Core&) = delete;
    Core(Core&&) = delete;
    Core& operator=(const Core&) = delete;
    Core& operator=(Core&&) = delete;

    /// Runs a step on the phone's thread, with the link if there is one. Any thread.
    template <class Step>
    void onLink(Step step) {
        boost::asio::post(context_, [this, step = std::move(step)]() mutable {
            if (link_) {
                step(*link_);
            }
        });
    }

    void send(phone::Outgoing::Kind kind, const QList<QByteArray>& parts,
              std::function<void()> sent = nullptr);
    std::expected<void, QString> connect(const QString& host, quint16 port, milliseconds timeout);
    bool waitUntilSent(milliseconds timeout);
    std::optional<QByteArray> waitForMessage(milliseconds timeout);
    bool waitForClosed(milliseconds timeout);
    bool isConnected();
    bool hasEndedCleanly();

    // Set before connect, then used on the phone's thread.
    MessageHandler onMessage;
    ClosedHandler onClosed;
    PongHandler onPong;

private:
    phone::PhoneConnection::Events events();
    void takeMessage(QByteArray message);
    void takeEnd(const QString& reason, bool isClean);

    boost::asio::io_context context_{1};
    boost::asio::executor_work_guard<boost::asio::io_context::executor_type> work_{context_.get_executor()};
    std::shared_ptr<phone::PhoneConnection> link_; ///< on the phone's thread only

    std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<QByteArray> messages_;
    quint64 sentMark_ = 0; ///< the last call of waitUntilSent that has been served
    quint64 lastMark_ = 0; ///< the last call of waitUntilSent
    bool isConnected_ = false;
    bool hasEndedCleanly_ = false; ///< the last link that was open

    std::thread thread_;
};

Phone::Core::Core() {
    thread_ = std::thread([this] {
        pthread_setname_np(pthread_self(), "phone");
        context_.run();
    });
}

Phone::Core::~Core() {
    boost::asio::post(context_, [this] {
        // The owner of the callbacks is being destroyed as well, so nobody is told.
        onMessage = nullptr;
        onClosed = nullptr;
        onPong = nullptr;
        if (link_) {
            link_->abort({});
        }
        context_.stop();
    });
    thread_.join();
}

std::expected<void, QString> Phone::Core::connect(const QString& host, quint16 port, milliseconds timeout) {
    auto outcome = std::make_shared<Answer<std::expected<void, QString>>>();
    boost::asio::post(context_, [this, outcome, host, port, timeout] {
        if (link_) {
            link_->abort(QStringLiteral("connecting anew"));
        }
        link_ = std::make_shared<phone::PhoneConnection>(context_, events());
        link_->open(host, port, timeout, [this, outcome](std::expected<void, QString> opened) {
            {
                const std::scoped_lock lock(mutex_);
                isConnected_ = opened.has_value();
            }
            outcome->bring(std::move(opened));
        });
    });
    // The link keeps the time itself; the wait here only has to be the longer one.
    return outcome->waitFor(timeout + graceAfterAbort)
        .value_or(std::unexpected(QStringLiteral("no answer in time")));
}

phone::PhoneConnection::Events Phone::Core::events() {
    return {.message = [this](QByteArray message) { takeMessage(std::move(message)); },
            .pong =
                [this](const QByteArray& payload) {
                    if (onPong) {
                        onPong(payload);
                    }
                },
            .closed =
                [this](const QString& reason, bool isClean) {
                    takeEnd(reason, isClean);
                }};
}

void Phone::Core::takeMessage(QByteArray message) {
    if (onMessage) {
        onMessage(message);
        return;
    }
    {
        const std::scoped_lock lock(mutex_);
        messages_.push_back(std::move(message));
    }
    changed_.notify_all();
}

void Phone::Core::takeEnd(const QString& reason, bool isClean) {
    if (onClosed) {
        onClosed(reason);
    }
    {
        const std::scoped_lock lock(mutex_);
        isConnected_ = false;
        hasEndedCleanly_ = isClean;
    }
    changed_.notify_all();
}

void Phone::Core::send(phone::Outgoing::Kind kind, const QList<QByteArray>& parts,
                       std::function<void()> sent) {
    onLink([kind, parts, sent = std::move(sent)](phone::PhoneConnection& link) mutable {
        link.send({.kind = kind, .parts = parts, .sent = std::move(sent)});
    });
}

bool Phone::Core::waitUntilSent(milliseconds timeout) {
    std::unique_lock lock(mutex_);
    const quint64 mark = ++lastMark_;
    send(phone::Outgoing::Kind::Prepared, {}, [this, mark] {
        {
            const std::scoped_lock marking(mutex_);
            sentMark_ = mark;
        }
        changed_.notify_all();
    });
    changed_.wait_for(lock, timeout, [this, mark] { return sentMark_ >= mark || !isConnected_; });
    return sentMark_ >= mark;
}

std::optional<QByteArray> Phone::Core::waitForMessage(milliseconds timeout) {
    std::unique_lock lock(mutex_);
    if (!changed_.wait_for(lock, timeout, [this] { return !messages_.empty(); })) {
        return std::nullopt;
    }
    QByteArray message = std::move(messages_.front());
    messages_.pop_front();
    return message;
}

bool Phone::Core::waitForClosed(milliseconds timeout) {
    std::unique_lock lock(mutex_);
    return changed_.wait_for(lock, timeout, [this] { return !isConnected_; });
}

bool Phone::Core::isConnected() {
    const std::scoped_lock lock(mutex_);
    return isConnected_;
}

bool Phone::Core::hasEndedCleanly() {
    const std::scoped_lock lock(mutex_);
    return !isConnected_ && hasEndedCleanly_;
}

Phone::Phone() : core_(std::make_unique<Core>()) {}
Phone::~Phone() = default;

void Phone::onMessage(MessageHandler handler) {
    core_->onMessage = std::move(handler);
}
void Phone::onClosed(ClosedHandler handler) {
    core_->onClosed = std::move(handler);
}
void Phone::onPong(PongHandler handler) {
    core_->onPong = std::move(handler);
}

std::expected<void, QString> Phone::connect(const QString& host, quint16 port, milliseconds timeout) {
    return core_->connect(host, port, timeout);
}

bool Phone::isConnected() const {
    return core_->isConnected();
}

void Phone::sendText(const QByteArray& message) {
    core_->send(phone::Outgoing::Kind::Text, {message});
}
void Phone::sendBinary(const QByteArray& message) {
    core_->send(phone::Outgoing::Kind::Binary, {message});
}
void Phone::sendFragments(const QList<QByteArray>& fragments) {
    core_->send(phone::Outgoing::Kind::Text, fragments);
}
void Phone::sendPrepared(const QByteArray& frames) {
    core_->send(phone::Outgoing::Kind::Prepared, {frames});
}
void Phone::ping(const QByteArray& payload) {
    core_->send(phone::Outgoing::Kind::Ping, {payload});
}

bool Phone::waitUntilSent(milliseconds timeout) {
    return core_->waitUntilSent(timeout);
}
std::optional<QByteArray> Phone::waitForMessage(milliseconds timeout) {
    return core_->waitForMessage(timeout);
}
bool Phone::waitForClosed(milliseconds timeout) {
    return core_->waitForClosed(timeout);
}

void Phone::pauseReading() {
    core_->onLink([](phone::PhoneConnection& link) { link.pauseReading(); });
}

void Phone::resumeReading() {
    core_->onLink([](phone::PhoneConnection& link) { link.resumeReading(); });
}

bool Phone::close(milliseconds timeout) {
    core_->send(phone::Outgoing::Kind::Close, {});
    if (core_->waitForClosed(timeout)) {
        return core_->hasEndedCleanly();
    }
    abort();
    core_->waitForClosed(graceAfterAbort);
    return false;
}

void Phone::abort() {
    core_->onLink([](phone::PhoneConnection& link) { link.abort(QStringLiteral("cut by the phone")); });
}

} // namespace brenvale
