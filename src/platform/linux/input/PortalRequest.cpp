#include "platform/linux/input/PortalRequest.h"

#include "platform/linux/input/PortalNames.h"

#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QUuid>

namespace brenvale {

namespace {

const QString requestInterface = QStringLiteral("org.freedesktop.portal.Request");

QString requestPath(const QDBusConnection& bus, const QString& token) {
    auto sender = bus.baseService().mid(1);
    return portalPath + QStringLiteral("/request/") + sender.replace(u'.', u'_') + u'/' + token;
}

} // namespace

void PortalRequest::make(const QDBusConnection& bus, Call call, QObject* parent, Answered answered) {
    auto* request = new PortalRequest(bus, parent, std::move(answered));
    const auto token = QStringLiteral("brenvale_") + QUuid::createUuid().toString(QUuid::Id128);
    auto* service =
        new QDBusServiceWatcher(portalService, bus, QDBusServiceWatcher::WatchForUnregistration, request);
    connect(service, &QDBusServiceWatcher::serviceUnregistered, request,
            [request] { request->finish(std::unexpected(Failure::failed)); });
    request->listen(requestPath(bus, token)); // before the call: the answer may come before the call's own
    call.options.insert(QStringLiteral("handle_token"), token);
    auto message = QDBusMessage::createMethodCall(portalService, portalPath, call.interface, call.method);
    message.setArguments(call.arguments << call.options);
    auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(message, portalPatience), request);
    connect(watcher, &QDBusPendingCallWatcher::finished, request,
            [request](QDBusPendingCallWatcher* finished) {
                const QDBusPendingReply<QDBusObjectPath> reply = *finished;
                if (reply.isError()) {
                    request->finish(std::unexpected(Failure::failed));
                } else if (reply.value().path() != request->path_) {
                    request->listen(reply.value().path()); // portals of before 0.9 choose the path themselves
                }
            });
}

void PortalRequest::listen(const QString& path) {
    const auto signal = QStringLiteral("Response");
    if (!path_.isEmpty()) {
        bus_.disconnect(portalService, path_, requestInterface, signal, this,
                        SLOT(response(uint, QVariantMap)));
    }
    path_ = path;
    bus_.connect(portalService, path_, requestInterface, signal, this, SLOT(response(uint, QVariantMap)));
}

void PortalRequest::response(uint code, const QVariantMap& results) {
    constexpr uint granted = 0;
    constexpr uint refused = 1;
    if (code == granted) {
        finish(results);
    } else {
        finish(std::unexpected(code == refused ? Failure::refused : Failure::failed));
    }
}

void PortalRequest::finish(const Results& results) {
    if (answered_) {
        deleteLater();
        std::exchange(answered_, {})(results);
    }
}

} // namespace brenvale
