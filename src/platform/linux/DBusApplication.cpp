#include "platform/linux/DBusApplication.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>

namespace brenvale {

namespace {

const QString service = QStringLiteral("org.brenvale.Brenvale");
const QString path = QStringLiteral("/org/brenvale/Brenvale");
const QString interface = QStringLiteral("org.freedesktop.Application");
constexpr int answerMilliseconds = 5000;

/// The right to take the focus, which the asking program got from the user's click.
void takeActivationToken(const QVariantMap& platformData) {
    const auto token = platformData.value(QStringLiteral("activation-token"));
    if (token.isValid()) {
        qputenv("XDG_ACTIVATION_TOKEN", token.toString().toUtf8()); // where Qt looks for it
    }
}

QVariantMap ownPlatformData() {
    const auto token = qEnvironmentVariable("XDG_ACTIVATION_TOKEN");
    return token.isEmpty() ? QVariantMap() : QVariantMap{{QStringLiteral("activation-token"), token}};
}

} // namespace

bool DBusApplication::claim() {
    auto bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        return true;
    }
    bus.registerObject(path, this,
                       QDBusConnection::ExportAllSlots); // before the name: nobody must find it empty
    const auto reply = bus.interface()->registerService(service, QDBusConnectionInterface::DontQueueService);
    return !reply.isValid() || reply.value() == QDBusConnectionInterface::ServiceRegistered;
}

bool DBusApplication::handOver(const QList<QUrl>& urls) {
    const bool opens = !urls.isEmpty();
    auto message = QDBusMessage::createMethodCall(
        service, path, interface, opens ? QStringLiteral("Open") : QStringLiteral("Activate"));
    if (opens) {
        message << QUrl::toStringList(urls, QUrl::FullyEncoded);
    }
    message << ownPlatformData();
    const auto answer = QDBusConnection::sessionBus().call(message, QDBus::Block, answerMilliseconds);
    return answer.type() == QDBusMessage::ReplyMessage;
}

void DBusApplication::Activate(const QVariantMap& platformData) {
    takeActivationToken(platformData);
    activate();
}

void DBusApplication::Open(const QStringList& uris, const QVariantMap& platformData) {
    takeActivationToken(platformData);
    open(QUrl::fromStringList(uris));
}

void DBusApplication::ActivateAction(const QString& name, const QVariantList& /*parameters*/,
                                     const QVariantMap& platformData) {
    takeActivationToken(platformData);
    activateAction(name);
}

} // namespace brenvale
