#include "LinkLoad.h"

#include "ClientFrames.h"
#include "Phone.h"
#include "transfer/FileChunkText.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QFile>
#include <QRandomGenerator>

#include <algorithm>
#include <chrono>
#include <functional>
#include <vector>

namespace brenvale::bench {

using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

namespace {

constexpr double chunkBytes = 1 << 20;

double secondsSince(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

/// Serves the main thread until `isDone`.
void serveUntil(const std::function<bool()>& isDone) {
    while (!isDone()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents);
    }
}

QByteArray notification(int number) {
    return R"({"app":"Messenger","title":"Ann Example","body":"Message )" + QByteArray::number(number) + ' ' +
           QByteArray(110, 'b') + R"(","time":1700000000.123,"key":"0|com.example.messenger|)" +
           QByteArray::number(number) + R"(|null|10234"})";
}

/// The contents of a chunk of a compressed file.
QByteArray randomBytes() {
    QByteArray bytes(1 << 20, Qt::Uninitialized);
    std::ranges::generate(bytes, [] { return static_cast<char>(QRandomGenerator::global()->generate()); });
    return bytes;
}

} // namespace

LinkLoad::LinkLoad(quint16 port) {
    settings_.port = port;
    server_ = std::make_shared<WebSocketServer>(platform_, transport_, queue_, main_);
    server_->historyStore = store_;
    server_->onStatusChange = [this](const QString& status) {
        if (!status.startsWith(QStringLiteral("listening"))) {
            qFatal("the link does not listen: %s", qUtf8Printable(status));
        }
        isListening_ = true;
        main_.async([] {}); // ends the wait
    };
    server_->start();
    serveUntil([this] { return isListening_.load(); });
}

void LinkLoad::connect(Phone& phone) const {
    if (const auto connected = phone.connect(QStringLiteral("127.0.0.1"), server_->port()); !connected) {
        qFatal("the link does not answer: %s", qUtf8Printable(connected.error()));
    }
}

double LinkLoad::notificationsPerSecond(int phones, int count) {
    std::vector<std::unique_ptr<Phone>> senders;
    std::vector<QByteArray> frames;
    for (int phone = 0; phone < phones; ++phone) {
        QList<QByteArray> messages;
        for (int i = 0; i < count / phones; ++i) {
            messages.append(notification((phone * (count / phones)) + i));
        }
        frames.push_back(phone::textFrames(messages));
        senders.push_back(std::make_unique<Phone>());
        connect(*senders.back());
    }
    const int expected = center_.requests + (count / phones * phones);
    const auto start = Clock::now();
    for (int phone = 0; phone < phones; ++phone) {
        senders[static_cast<std::size_t>(phone)]->sendPrepared(frames[static_cast<std::size_t>(phone)]);
    }
    serveUntil([&] { return center_.requests >= expected; });
    return count / secondsSince(start);
}

LinkLoad::RoundTrip LinkLoad::roundTripMicroseconds(int count) {
    const auto answering = store_->connectedDeviceName.subscribe([this](const auto& name) {
        if (name) {
            server_->send(R"({"action":"get_sms_history"})");
        }
    });
    Phone phone;
    std::vector<double> times;
    std::atomic<bool> isDone = false;
    auto start = Clock::now();
    const QByteArray message = R"({"action":"connected","deviceName":"Pixel"})";
    phone.onMessage([&](const QByteArray& /*answer*/) { // the greeting comes first and starts the loop
        times.push_back(1e6 * secondsSince(start));
        if (times.size() > static_cast<std::size_t>(count)) {
            isDone = true;
            main_.async([] {});
            return;
        }
        start = Clock::now();
        phone.sendText(message);
    });
    connect(phone);
    serveUntil([&] { return isDone.load(); });
    std::ranges::sort(times);
    return {.median = times[times.size() / 2], .percentile99 = times[times.size() * 99 / 100]};
}

double LinkLoad::incomingFileBytesPerSecond(const QString& folder, int mebibytes, bool escapesSlashes) {
    downloads_.path = folder;
    Phone phone;
    connect(phone);
    const auto name = QStringLiteral("brenvale-bench.bin");
    const auto chunk = [&](bool isLast) {
        auto text = fileChunkText(name, randomBytes(), isLast);
        return phone::textFrames({escapesSlashes ? text.replace('/', "\\/") : text});
    };
    const auto middle = chunk(false);
    const auto last = chunk(true);
    const int expected = center_.requests + 3; // at the start one notification, at the end two
    const auto start = Clock::now();
    phone.sendPrepared(phone::textFrames({fileTransferStartText(name, qint64{mebibytes} << 20)}));
    for (int i = 1; i < mebibytes; ++i) {
        phone.sendPrepared(middle);
    }
    phone.sendPrepared(last);
    serveUntil([&] { return center_.requests >= expected; });
    const double seconds = secondsSince(start);
    QFile::remove(folder + u'/' + name);
    return chunkBytes * mebibytes / seconds;
}

LinkLoad::Outgoing LinkLoad::sendFile(const QString& path) {
    Phone phone;
    std::atomic<bool> hasLast = false;
    phone.onMessage([&](const QByteArray& message) {
        if (message.left(80).contains(R"("isLast":true)")) { // the long member stands behind the others
            hasLast = true;
            main_.async([] {});
        }
    });
    connect(phone);
    Outgoing outgoing{};
    const int expected = center_.requests + 1;
    const auto start = Clock::now();
    server_->sendFile(QUrl::fromLocalFile(path));
    serveUntil([&] { return center_.requests >= expected; });
    outgoing.queuedSeconds = secondsSince(start);
    serveUntil([&] { return hasLast.load(); });
    outgoing.sentSeconds = secondsSince(start);
    return outgoing;
}

} // namespace brenvale::bench
