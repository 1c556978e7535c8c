#include "platform/linux/DBusApplication.h"

#include "platform/linux/ActivationToken.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QGuiApplication>
#include <QTimer>

#include <chrono>
#include <memory>

namespace brenvale {

namespace {

const QString applicationService = QStringLiteral("org.brenvale.Brenvale");
const QString applicationPath = QStringLiteral("/org/brenvale/Brenvale");
const QString applicationInterface = QStringLiteral("org.freedesktop.Application");
constexpr int answerMilliseconds = 5000;

/// The token holds for what the call brings about, which may take some steps more.
void lendActivationToken(const QVariantMap& platformData) {
    constexpr std::chrono::milliseconds enough{500};
    const auto text = platformData.value(QStringLiteral("activation-token")).toString();
    auto token = std::make_shared<ActivationToken>(text);
    QTimer::singleShot(enough, qApp, [token]() mutable { token.reset(); });
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
    bus.registerObject(applicationPath, this,
                       QDBusConnection::ExportAllSlots); // before the name: nobody must find it empty
    const auto reply =
        bus.interface()->registerService(applicationService, QDBusConnectionInterface::DontQueueService);
    return !reply.isValid() || reply.value() == QDBusConnectionInterface::ServiceRegistered;
}

void DBusApplication::release() {
    auto bus = QDBusConnection::sessionBus();
    if (bus.isConnected()) {
        bus.interface()->setTimeout(answerMilliseconds);
        // Its answer comes behind all that was sent before.
        bus.interface()->unregisterService(applicationService);
    }
}

bool DBusApplication::handOver(const QList<QUrl>& urls) {
    const bool opens = !urls.isEmpty();
    auto message =
        QDBusMessage::createMethodCall(applicationService, applicationPath, applicationInterface,
                                       opens ? QStringLiteral("Open") : QStringLiteral("Activate"));
    if (opens) {
        message << QUrl::toStringList(urls, QUrl::FullyEncoded);
    }
    message << ownPlatformData();
    const auto answer = QDBusConnection::sessionBus().call(message, QDBus::Block, answerMilliseconds);
    return answer.type() == QDBusMessage::ReplyMessage;
}

void DBusApplication::Activate(const QVariantMap& platformData) const {
    lendActivationToken(platformData);
    activate();
}

void DBusApplication::Open(const QStringList& uris, const QVariantMap& platformData) const {
    lendActivationToken(platformData);
    open(QUrl::fromStringList(uris));
}

void DBusApplication::ActivateAction(const QString& name, const QVariantList& /*parameters*/,
                                     const QVariantMap& platformData) const {
    lendActivationToken(platformData);
    activateAction(name);
}

} // namespace brenvale
