#pragma once

#include "CommandLine.h"
#include "Phone.h"
#include "ReceivedFiles.h"

#include <QByteArray>
#include <QJsonObject>
#include <QObject>
#include <QString>

#include <expected>
#include <functional>
#include <memory>

namespace brenvale::phone {

/// Writes a line to standard output at once. The main thread, which alone prints.
void print(const QString& line);
/// Writes what somebody does, in one line whatever the text holds.
void printDeed(const QString& who, const QString& deed);
void printError(const QString& line);

/// Sends messages, then files piece by piece, so that a large file does not stand in memory. Waits for the
/// socket.
std::expected<void, QString> sendAll(Phone& phone, const Sending& sending);

/// Carries what happens on the phone's thread to the main thread, by queued connections.
class PhoneEvents : public QObject {
    Q_OBJECT
Q_SIGNALS:
    void messageCame(const QByteArray& bytes);
    void linkEnded(const QString& reason);
};

/// A phone that stays with the desktop: prints what comes, stores files where a folder is given, tries again
/// after a loss where that is wanted. Lives on the main thread, with its event loop; the callbacks come there
/// too.
class Session {
public:
    Session(LinkOptions link, const QString& folder);

    std::function<void()> onConnected;                         ///< after each connect
    std::function<void(const QJsonObject& message)> onMessage; ///< after the message was printed

    /// The first attempt. False where there is no desktop and no further attempt follows.
    bool start();
    void send(const QByteArray& message);
    Phone& phone() { return phone_; }

private:
    bool connect();
    void tryAgainLater();
    void takeMessage(const QByteArray& bytes);
    void takeEnd(const QString& reason);

    LinkOptions link_;
    std::unique_ptr<ReceivedFiles> files_;
    PhoneEvents events_; ///< what still waits in its queue goes with it
    Phone phone_;        ///< goes first, so that its thread reports no more
};

} // namespace brenvale::phone
