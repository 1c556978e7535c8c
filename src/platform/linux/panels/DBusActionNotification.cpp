#include "platform/linux/panels/DBusActionNotification.h"

#include "platform/linux/CurrentDesktop.h"
#include "platform/linux/NotificationNames.h"
#include "platform/linux/NotificationText.h"
#include "platform/linux/NotifyCall.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QPointer>

#include <utility>

namespace brenvale {

namespace {

QDBusMessage methodCall(const QString& method) {
    return QDBusMessage::createMethodCall(notificationService, notificationPath, notificationService, method);
}

QVariantList notifyArguments(const ActionNotification::Content& content, uint replaced,
                             const QSet<QString>& capabilities) {
    constexpr unsigned char critical = 2;
    constexpr int neverExpires = 0;
    const NotificationContent text{.title = content.title, .body = content.body};
    const bool isGnome = currentDesktop().contains(QStringLiteral("GNOME"), Qt::CaseInsensitive);
    auto call = notifyCall(text, nullptr, capabilities, isGnome);
    for (const auto& action : content.actions) {
        call.actions << action << action;
    }
    call.hints.insert(QStringLiteral("urgency"), QVariant::fromValue(critical));
    call.hints.insert(QStringLiteral("resident"), true); // a press changes it, the call's end takes it away
    return {QStringLiteral("Brenvale"),
            replaced,
            QStringLiteral("phone"),
            notificationSummary(text),
            call.body,
            call.actions,
            call.hints,
            neverExpires};
}

} // namespace

DBusActionNotification::DBusActionNotification() {
    auto bus = QDBusConnection::sessionBus();
    if (bus.isConnected()) {
        bus.connect(notificationService, notificationPath, notificationService,
                    QStringLiteral("ActionInvoked"), this, SLOT(actionInvoked(uint, QString)));
        bus.connect(notificationService, notificationPath, notificationService,
                    QStringLiteral("NotificationClosed"), this, SLOT(notificationClosed(uint, uint)));
    }
}

DBusActionNotification::~DBusActionNotification() {
    DBusActionNotification::close();
}

void DBusActionNotification::show(const Content& content) {
    isWanted_ = true;
    waiting_ = content;
    takeNext();
}

void DBusActionNotification::close() {
    isWanted_ = false;
    waiting_.reset();
    if (const auto shown = std::exchange(serverId_, 0); shown != 0) {
        closeNotification(shown);
    }
}

void DBusActionNotification::takeNext() {
    if (isCalling_ || !waiting_.has_value() || !QDBusConnection::sessionBus().isConnected()) {
        return;
    }
    isCalling_ = true;
    if (!capabilities_) {
        askCapabilities();
        return;
    }
    const auto content = *std::move(waiting_);
    waiting_.reset();
    notify(content, *capabilities_);
}

void DBusActionNotification::askCapabilities() {
    auto* call = new QDBusPendingCallWatcher(
        QDBusConnection::sessionBus().asyncCall(methodCall(QStringLiteral("GetCapabilities"))), this);
    connect(call, &QDBusPendingCallWatcher::finished, this, [this, call] {
        call->deleteLater();
        const QDBusPendingReply<QStringList> reply(*call);
        isCalling_ = false;
        if (reply.isError()) { // no server: the next call to show may find one
            waiting_.reset();
            return;
        }
        const auto names = reply.value();
        capabilities_.emplace(names.cbegin(), names.cend());
        takeNext();
    });
}

void DBusActionNotification::notify(const Content& content, const QSet<QString>& capabilities) {
    auto message = methodCall(QStringLiteral("Notify"));
    message.setArguments(notifyArguments(content, serverId_, capabilities));
    // Outlives this object: what the server shows too late is taken away again.
    auto* call = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(message));
    connect(call, &QDBusPendingCallWatcher::finished, call, [self = QPointer(this), call] {
        call->deleteLater();
        const QDBusPendingReply<uint> reply(*call);
        const auto shown = reply.isError() ? 0 : reply.value();
        if (self != nullptr) {
            self->isCalling_ = false;
        }
        if (self != nullptr && self->isWanted_) {
            self->serverId_ = shown != 0 ? shown : self->serverId_;
            self->takeNext();
        } else if (shown != 0) {
            closeNotification(shown);
        }
    });
}

void DBusActionNotification::closeNotification(uint serverId) {
    auto message = methodCall(QStringLiteral("CloseNotification"));
    message.setArguments({serverId});
    QDBusConnection::sessionBus().send(message);
}

void DBusActionNotification::actionInvoked(uint serverId, const QString& action) {
    if (serverId != 0 && serverId == serverId_ && pressed) {
        pressed(action);
    }
}

void DBusActionNotification::notificationClosed(uint serverId, uint /*reason*/) {
    if (serverId == serverId_) {
        serverId_ = 0;
    }
}

} // namespace brenvale
