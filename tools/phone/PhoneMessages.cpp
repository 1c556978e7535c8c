#include "PhoneMessages.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <utility>

namespace brenvale::phone {
namespace {

QByteArray written(const QJsonObject& object) {
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

QJsonObject actionObject(const QString& action) {
    return {{QStringLiteral("action"), action}};
}

template <class Value>
void insertIfSet(QJsonObject& object, const QString& key, const std::optional<Value>& value) {
    if (value) {
        object.insert(key, *value);
    }
}

int typeCode(Direction direction) {
    return std::to_underlying(direction);
}

QJsonObject smsObject(const Sms& sms) {
    QJsonObject object{{QStringLiteral("address"), sms.address},
                       {QStringLiteral("body"), sms.body},
                       {QStringLiteral("date"), sms.date},
                       {QStringLiteral("type"), typeCode(sms.direction)}};
    insertIfSet(object, QStringLiteral("name"), sms.name);
    return object;
}

QJsonObject callObject(const Call& call) {
    QJsonObject object{{QStringLiteral("number"), call.number},
                       {QStringLiteral("date"), call.date},
                       {QStringLiteral("duration"), call.duration},
                       {QStringLiteral("type"), typeCode(call.direction)}};
    insertIfSet(object, QStringLiteral("name"), call.name);
    return object;
}

QJsonObject simObject(const Sim& sim) {
    return {{QStringLiteral("slot"), sim.slot}, {QStringLiteral("carrier"), sim.carrier}};
}

template <class Record, class MakeObject>
QByteArray listMessage(const QString& action, const QString& key, const QList<Record>& records,
                       MakeObject makeObject) {
    QJsonArray array;
    for (const Record& record : records) {
        array.append(makeObject(record));
    }
    QJsonObject object = actionObject(action);
    object.insert(key, array);
    return written(object);
}

/// The data goes in behind the finished object: base64 needs no escaping, and a chunk is large.
QByteArray withFileData(QByteArray message, QByteArrayView data) {
    const QByteArray encoded = QByteArray::fromRawData(data.data(), data.size()).toBase64();
    message.chop(1);
    message.reserve(message.size() + encoded.size() + 16);
    message.append(R"(,"fileData":")").append(encoded).append(R"("})");
    return message;
}

} // namespace

QByteArray connectedMessage(const QString& deviceName) {
    QJsonObject object = actionObject(QStringLiteral("connected"));
    object.insert(QStringLiteral("deviceName"), deviceName);
    return written(object);
}

QByteArray deviceInfoMessage(const std::optional<QString>& deviceName,
                             const std::optional<QString>& wifiName) {
    QJsonObject object = actionObject(QStringLiteral("device_info"));
    insertIfSet(object, QStringLiteral("deviceName"), deviceName);
    insertIfSet(object, QStringLiteral("wifiName"), wifiName);
    return written(object);
}

QByteArray smsHistoryMessage(const QList<Sms>& messages) {
    return listMessage(QStringLiteral("sms_history"), QStringLiteral("messages"), messages, smsObject);
}

QByteArray callHistoryMessage(const QList<Call>& calls) {
    return listMessage(QStringLiteral("call_history"), QStringLiteral("calls"), calls, callObject);
}

QByteArray simInfoMessage(const QList<Sim>& sims) {
    return listMessage(QStringLiteral("sim_info"), QStringLiteral("sims"), sims, simObject);
}

// The one message without an "action": the desktop knows it by its "app".
QByteArray notificationMessage(const Notification& notification) {
    QJsonObject object{{QStringLiteral("app"), notification.app},
                       {QStringLiteral("title"), notification.title},
                       {QStringLiteral("body"), notification.body}};
    insertIfSet(object, QStringLiteral("time"), notification.time);
    insertIfSet(object, QStringLiteral("key"), notification.key);
    return written(object);
}

QByteArray callMessage(const CallReport& report) {
    QJsonObject object = actionObject(report.action);
    insertIfSet(object, QStringLiteral("state"), report.state);
    insertIfSet(object, QStringLiteral("number"), report.number);
    insertIfSet(object, QStringLiteral("name"), report.name);
    insertIfSet(object, QStringLiteral("duration"), report.duration);
    return written(object);
}

QByteArray clipboardMessage(const QString& text) {
    QJsonObject object = actionObject(QStringLiteral("clipboard"));
    object.insert(QStringLiteral("text"), text);
    return written(object);
}

QByteArray batteryMessage(qint64 level, bool isCharging) {
    QJsonObject object = actionObject(QStringLiteral("battery_status"));
    object.insert(QStringLiteral("level"), level);
    object.insert(QStringLiteral("isCharging"), isCharging);
    return written(object);
}

QByteArray remoteControlMessage(const RemoteCommand& command) {
    QJsonObject object = actionObject(QStringLiteral("remote_control"));
    object.insert(QStringLiteral("command"), command.command);
    insertIfSet(object, QStringLiteral("type"), command.type);
    insertIfSet(object, QStringLiteral("text"), command.text);
    insertIfSet(object, QStringLiteral("dx"), command.dx);
    insertIfSet(object, QStringLiteral("dy"), command.dy);
    insertIfSet(object, QStringLiteral("button"), command.button);
    insertIfSet(object, QStringLiteral("url"), command.url);
    return written(object);
}

QByteArray fileStartMessage(const QString& fileName, qint64 fileSize) {
    QJsonObject object = actionObject(QStringLiteral("file_transfer_start"));
    object.insert(QStringLiteral("fileName"), fileName);
    object.insert(QStringLiteral("fileSize"), fileSize);
    return written(object);
}

QByteArray fileChunkMessage(const QString& fileName, QByteArrayView data, bool isLast) {
    QJsonObject object = actionObject(QStringLiteral("file_chunk"));
    object.insert(QStringLiteral("fileName"), fileName);
    object.insert(QStringLiteral("isLast"), isLast);
    return withFileData(written(object), data);
}

QByteArray fileTransferMessage(const QString& fileName, QByteArrayView data) {
    QJsonObject object = actionObject(QStringLiteral("file_transfer"));
    object.insert(QStringLiteral("fileName"), fileName);
    return withFileData(written(object), data);
}

// Slashes stand inside strings only, so no other part of a message can change.
QByteArray withEscapedSlashes(QByteArray message) {
    return message.replace('/', "\\/");
}

} // namespace brenvale::phone
