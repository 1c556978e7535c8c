#include "Session.h"

#include "DesktopMessages.h"
#include "FileChunks.h"

#include <QCoreApplication>
#include <QTimer>

#include <cstdio>
#include <utility>

namespace brenvale::phone {
namespace {

using namespace std::chrono_literals;

constexpr auto reconnectPause = 2s;
constexpr auto patience = 60s; // for a piece of a file on a slow network

void writeLine(std::FILE* stream, const QString& line) {
    const QByteArray bytes = line.toUtf8() + '\n';
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stream);
    std::fflush(stream);
}

std::expected<void, QString> sendFile(Phone& phone, const QString& path, SlashStyle slashes) {
    auto chunks = FileChunks::open(path, slashes);
    if (!chunks) {
        return std::unexpected(chunks.error());
    }
    while (const auto message = chunks->next()) {
        phone.sendText(*message);
        if (!phone.waitUntilSent(patience)) {
            return std::unexpected(QStringLiteral("%1: the link was lost").arg(path));
        }
    }
    return {};
}

} // namespace

void print(const QString& line) {
    writeLine(stdout, line);
}
void printDeed(const QString& who, const QString& deed) {
    print(who + QStringLiteral(": ") + QString(deed).replace(QLatin1Char('\n'), QStringLiteral(" ⏎ ")));
}

void printError(const QString& line) {
    writeLine(stderr, QStringLiteral("brenvale-phone: ") + line);
}

std::expected<void, QString> sendAll(Phone& phone, const Sending& sending) {
    for (const QByteArray& message : sending.messages) {
        phone.sendText(message);
    }
    for (const QString& path : sending.files) {
        if (auto sent = sendFile(phone, path, sending.slashes); !sent) {
            return sent;
        }
    }
    return {};
}

Session::Session(LinkOptions link, const QString& folder)
    : link_(std::move(link)), files_(folder.isEmpty() ? nullptr : std::make_unique<ReceivedFiles>(folder)) {
    QObject::connect(
        &events_, &PhoneEvents::messageCame, &events_,
        [this](const QByteArray& bytes) { takeMessage(bytes); }, Qt::QueuedConnection);
    QObject::connect(
        &events_, &PhoneEvents::linkEnded, &events_, [this](const QString& reason) { takeEnd(reason); },
        Qt::QueuedConnection);
    phone_.onMessage([this](const QByteArray& bytes) { Q_EMIT events_.messageCame(bytes); });
    phone_.onClosed([this](const QString& reason) { Q_EMIT events_.linkEnded(reason); });
}

bool Session::start() {
    if (connect()) {
        return true;
    }
    if (link_.reconnects) {
        tryAgainLater();
    }
    return link_.reconnects;
}

bool Session::connect() {
    const auto connected = phone_.connect(link_.host, link_.port);
    if (!connected) {
        printError(QStringLiteral("%1:%2: %3").arg(link_.host).arg(link_.port).arg(connected.error()));
        return false;
    }
    print(QStringLiteral("Connected to %1:%2").arg(link_.host).arg(link_.port));
    if (onConnected) {
        onConnected();
    }
    return true;
}

void Session::tryAgainLater() {
    QTimer::singleShot(reconnectPause, &events_, [this] {
        if (!connect()) {
            tryAgainLater();
        }
    });
}

void Session::send(const QByteArray& message) {
    phone_.sendText(message);
}

void Session::takeMessage(const QByteArray& bytes) {
    printDeed(QStringLiteral("Desktop"), describedDesktopMessage(bytes));
    const auto message = desktopMessage(bytes);
    if (!message) {
        return;
    }
    if (files_) {
        if (const auto line = files_->take(*message)) {
            printDeed(QStringLiteral("Phone"), *line);
        }
    }
    if (onMessage) {
        onMessage(*message);
    }
}

void Session::takeEnd(const QString& reason) {
    print(QStringLiteral("The link is lost: ") + reason);
    if (link_.reconnects) {
        tryAgainLater();
    } else {
        QCoreApplication::exit(1);
    }
}

} // namespace brenvale::phone
