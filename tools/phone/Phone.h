#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <chrono>
#include <expected>
#include <functional>
#include <memory>
#include <optional>

namespace brenvale {

/// A phone that is not there: a WebSocket client with a thread of its own, named "phone". It connects to the
/// desktop, sends messages and takes what the desktop sends. One link at a time; after its end the phone may
/// connect again.
///
/// Functions may be called from any thread but "phone" where they say that they wait; the others from any
/// thread, callbacks included. What is sent goes out in the order of the calls. Without a link, sending does
/// nothing. The callbacks run on "phone" and are to be set before connect. Destroying the phone cuts a link
/// that is still open.
class Phone {
public:
    using MessageHandler = std::function<void(const QByteArray& message)>;
    using ClosedHandler = std::function<void(const QString& reason)>;
    using PongHandler = std::function<void(const QByteArray& payload)>;

    static constexpr std::chrono::milliseconds defaultTimeout{5000};

    Phone();
    ~Phone();
    Phone(const Phone&) = delete;
    Phone(Phone&&) = delete;
    Phone& operator=(const Phone&) = delete;
    Phone& operator=(Phone&&) = delete;

    /// Takes every message; while it is unset they are kept for waitForMessage instead.
    void onMessage(MessageHandler handler);
    /// Hears once of the end of each link that connect has opened, whichever side ended it. Who waits for
    /// that end goes on afterwards.
    void onClosed(ClosedHandler handler);
    void onPong(PongHandler handler);

    /// Waits until the desktop has taken the phone as a WebSocket client. The error is a text for people.
    /// A link that is still open is cut first.
    std::expected<void, QString> connect(const QString& host, quint16 port,
                                         std::chrono::milliseconds timeout = defaultTimeout);
    [[nodiscard]] bool isConnected() const;

    /// One message in one frame.
    void sendText(const QByteArray& message);
    void sendBinary(const QByteArray& message);
    /// One text message, a frame for each fragment.
    void sendFragments(const QList<QByteArray>& fragments);
    /// Frames that are ready made (phone::textFrames), written to the socket as they are.
    void sendPrepared(const QByteArray& frames);
    /// At most 125 bytes, the rest is cut off.
    void ping(const QByteArray& payload);

    /// Waits until all that was sent so far is with the system's socket. False when time ran out or the link
    /// ended.
    bool waitUntilSent(std::chrono::milliseconds timeout = defaultTimeout);

    /// Waits for the next message in the order of arrival; messages outlive the link that brought them.
    std::optional<QByteArray> waitForMessage(std::chrono::milliseconds timeout = defaultTimeout);
    /// Waits for the end of the link, and gives true when there is none (any more).
    bool waitForClosed(std::chrono::milliseconds timeout = defaultTimeout);

    /// A phone that stalls: it takes nothing from the socket, beyond one read that may already be under way.
    void pauseReading();
    void resumeReading();

    /// Sends what is queued, then says goodbye and waits for the desktop's answer. True when both sides have
    /// said it, which means that the desktop has read everything. When there is no answer in time the link is
    /// cut.
    bool close(std::chrono::milliseconds timeout = defaultTimeout);
    /// Drops the link at once, as a phone that leaves the network: nothing is flushed, the desktop sees a
    /// reset.
    void abort();

private:
    class Core;
    std::unique_ptr<Core> core_;
};

} // namespace brenvale
