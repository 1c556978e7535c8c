#include "LinkLoad.h"

#include "ClientFrames.h"
#include "Phone.h"
#include "transfer/FileChunkText.h"
#include "transfer/FileTransferListModel.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>

#include <algorithm>
#include <functional>
#include <future>
#include <thread>
#include <vector>

namespace brenvale::bench {

using namespace std::chrono_literals;

namespace {

constexpr double chunkBytes = 1 << 20;
constexpr auto probePause = 1ms;

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

Distribution LinkLoad::roundTripMicroseconds(int count) {
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
    return distributionOf(std::move(times));
}

LinkLoad::Incoming LinkLoad::receiveFile(const QString& folder, int mebibytes, bool escapesSlashes) {
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
    const double cpuBefore = linkCpuSeconds();
    isFileUnderWay_ = true;
    const auto start = Clock::now();
    phone.sendPrepared(phone::textFrames({fileTransferStartText(name, qint64{mebibytes} << 20)}));
    for (int i = 1; i < mebibytes; ++i) {
        phone.sendPrepared(middle);
    }
    phone.sendPrepared(last);
    serveUntil([&] { return center_.requests >= expected; });
    const double seconds = secondsSince(start);
    isFileUnderWay_ = false;
    const double bytes = chunkBytes * mebibytes;
    QFile::remove(folder + u'/' + name);
    return {.bytesPerSecond = bytes / seconds, .linkSecondsForByte = (linkCpuSeconds() - cpuBefore) / bytes};
}

LinkLoad::Waits LinkLoad::waitsDuringUpload(const QString& folder, int mebibytes) {
    const FileTransferListModel view(*store_);
    std::vector<double> pings;
    std::vector<double> steps;
    const auto count = [this](std::vector<double>& waits, Clock::time_point from) {
        if (isFileUnderWay_) { // before and after it this program itself is at work
            waits.push_back(1e3 * secondsSince(from));
        }
    };
    Phone other;
    other.onPong([&](const QByteArray& sent) {
        count(pings, Clock::time_point(std::chrono::nanoseconds(sent.toLongLong())));
    });
    connect(other);
    // One a millisecond, whether or not the last has been answered: who waits long is not left out.
    std::jthread prober([&](const std::stop_token& stop) {
        while (!stop.stop_requested()) {
            const auto now = Clock::now();
            other.ping(QByteArray::number(qint64{now.time_since_epoch() / 1ns}));
            main_.async([&, now] { count(steps, now); });
            std::this_thread::sleep_for(probePause);
        }
    });
    (void)receiveFile(folder, mebibytes, false);
    prober.request_stop();
    prober.join();
    QCoreApplication::processEvents(); // the last steps
    other.close();
    return {.ping = distributionOf(std::move(pings)), .mainStep = distributionOf(std::move(steps))};
}

LinkLoad::Outgoing LinkLoad::sendFile(const QString& path) {
    Phone phone;
    std::atomic<bool> hasLast = false;
    phone.onMessage([&](const QByteArray& message) {
        if (isLastChunk(message)) {
            hasLast = true;
            main_.async([] {});
        }
    });
    connect(phone);
    Outgoing outgoing{};
    const int expected = center_.requests + 1;
    const double cpuBefore = linkCpuSeconds();
    const auto start = Clock::now();
    server_->sendFile(QUrl::fromLocalFile(path));
    serveUntil([&] { return center_.requests >= expected; });
    outgoing.queuedSeconds = secondsSince(start);
    serveUntil([&] { return hasLast.load(); });
    outgoing.sentSeconds = secondsSince(start);
    outgoing.linkSecondsForByte =
        (linkCpuSeconds() - cpuBefore) / static_cast<double>(QFileInfo(path).size());
    return outgoing;
}

void LinkLoad::sendFileToNamedPhone(const QString& path) {
    serveUntil([this] { return store_->connectedDeviceName.get().has_value(); });
    server_->sendFile(QUrl::fromLocalFile(path));
    while (true) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

double LinkLoad::linkCpuSeconds() {
    std::promise<double> seconds;
    queue_.async([&seconds] { seconds.set_value(threadCpuSeconds()); });
    return seconds.get_future().get();
}

bool isLastChunk(const QByteArray& message) {
    return message.left(80).contains(R"("isLast":true)"); // the long member stands behind the others
}

} // namespace brenvale::bench
