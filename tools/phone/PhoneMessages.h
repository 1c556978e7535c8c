#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QList>
#include <QString>

#include <optional>

/// Every message that a phone sends, as the bytes of one JSON object. Pure functions, any thread.
namespace brenvale::phone {

/// The direction of a message or a call in the phone's logs.
enum class Direction : quint8 { Incoming = 1, Outgoing = 2, Missed = 3 };

struct Sms {
    QString address;
    std::optional<QString> name = std::nullopt;
    QString body;
    qint64 date = 0; ///< milliseconds since 1970
    Direction direction = Direction::Incoming;
};

struct Call {
    QString number;
    std::optional<QString> name = std::nullopt;
    qint64 date = 0;     ///< milliseconds since 1970
    qint64 duration = 0; ///< seconds
    Direction direction = Direction::Incoming;
};

struct Sim {
    qint64 slot = 0;
    QString carrier;
};

struct Notification {
    QString app;
    QString title;
    QString body;
    std::optional<double> time = std::nullopt; ///< seconds since 1970, unlike the dates of the logs
    std::optional<QString> key = std::nullopt;
};

/// What the telephone does now. A member without a value is left out of the message.
struct CallReport {
    QString action = QStringLiteral("call_state_changed");
    std::optional<QString> state = std::nullopt; ///< RINGING, OFFHOOK or IDLE
    std::optional<QString> number = std::nullopt;
    std::optional<QString> name = std::nullopt;
    std::optional<qint64> duration = std::nullopt; ///< seconds; -1 in a "call_update" ends the call
};

/// A command that drives the desktop. A member without a value is left out of the message.
struct RemoteCommand {
    QString command;
    std::optional<QString> type = std::nullopt;
    std::optional<QString> text = std::nullopt;
    std::optional<double> dx = std::nullopt;
    std::optional<double> dy = std::nullopt;
    std::optional<QString> button = std::nullopt;
    std::optional<QString> url = std::nullopt;
};

QByteArray connectedMessage(const QString& deviceName);
QByteArray deviceInfoMessage(const std::optional<QString>& deviceName,
                             const std::optional<QString>& wifiName);
QByteArray smsHistoryMessage(const QList<Sms>& messages);
QByteArray callHistoryMessage(const QList<Call>& calls);
QByteArray simInfoMessage(const QList<Sim>& sims);
QByteArray notificationMessage(const Notification& notification);
QByteArray callMessage(const CallReport& report);
QByteArray clipboardMessage(const QString& text);
QByteArray batteryMessage(qint64 level, bool isCharging);
QByteArray remoteControlMessage(const RemoteCommand& command);

QByteArray fileStartMessage(const QString& fileName, qint64 fileSize);
QByteArray fileChunkMessage(const QString& fileName, QByteArrayView data, bool isLast);
/// The form that carries a last chunk and ends the transfer by its name alone.
QByteArray fileTransferMessage(const QString& fileName, QByteArrayView data);

/// The same message with each slash written as \/, as Android's own JSON writer does it.
QByteArray withEscapedSlashes(QByteArray message);

} // namespace brenvale::phone
