#include "platform/linux/input/PortalRequest.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QUuid>

namespace brenvale {

namespace {

const QString portal = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString requestInterface = QStringLiteral("org.freedesktop.portal.Request");

QString requestPath(const QString& token) {
    auto sender = QDBusConnection::sessionBus().baseService().mid(1);
    return portalPath + QStringLiteral("/request/") + sender.replace(u'.', u'_') + u'/' + token;
}

} // namespace

void PortalRequest::call(const QString& interface, const QString& method, const QVariantList& arguments,
                         QVariantMap options, Answered answered) {
    auto* request = new PortalRequest(std::move(answered)); // NOLINT: it deletes itself
    const auto token = QStringLiteral("brenvale_") + QUuid::createUuid().toString(QUuid::Id128);
    auto* service = new QDBusServiceWatcher(portal, QDBusConnection::sessionBus(),
                                            QDBusServiceWatcher::WatchForUnregistration, request);
    connect(service, &QDBusServiceWatcher::serviceUnregistered, request, [request] { request->finish({}); });
    request->listen(requestPath(token)); // before the call: the answer may come before the call's own
    options.insert(QStringLiteral("handle_token"), token);
    auto message = QDBusMessage::createMethodCall(portal, portalPath, interface, method);
    message.setArguments(QVariantList(arguments) << options);
    auto* watcher = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(message), request);
    connect(watcher, &QDBusPendingCallWatcher::finished, request,
            [request](QDBusPendingCallWatcher* finished) {
                const QDBusPendingReply<QDBusObjectPath> reply = *finished;
                if (reply.isError()) {
                    request->finish({});
                } else if (reply.value().path() != request->path_) {
                    request->listen(reply.value().path()); // portals of before 0.9 choose the path themselves
                }
            });
}

void PortalRequest::listen(const QString& path) {
    auto bus = QDBusConnection::sessionBus();
    const auto signal = QStringLiteral("Response");
    if (!path_.isEmpty()) {
        bus.disconnect(portal, path_, requestInterface, signal, this, SLOT(response(uint, QVariantMap)));
    }
    path_ = path;
    bus.connect(portal, path_, requestInterface, signal, this, SLOT(response(uint, QVariantMap)));
}

void PortalRequest::response(uint code, const QVariantMap& results) {
    constexpr uint granted = 0;
    finish(code == granted ? std::optional(results) : std::nullopt);
}

void PortalRequest::finish(const std::optional<QVariantMap>& results) {
    if (answered_) {
        deleteLater();
        std::exchange(answered_, {})(results);
    }
}

} // namespace brenvale
