#include "platform/linux/NotificationAuthorization.h"

#include "platform/linux/NotificationNames.h"
#include "platform/linux/NotificationSwitch.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QPointer>
#include <QTimer>

#include <chrono>

namespace brenvale {

namespace {

constexpr std::chrono::seconds serverPatience{10};

/// Calls `method` of the bus itself; `answered` gets an empty message's arguments where it fails.
void askBus(QObject* context, const QString& method, const QVariantList& arguments,
            std::function<void(const QVariantList& answer)> answered) {
    const auto bus = QStringLiteral("org.freedesktop.DBus");
    auto message = QDBusMessage::createMethodCall(bus, QStringLiteral("/org/freedesktop/DBus"), bus, method);
    message.setArguments(arguments);
    auto* watcher = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(message), context);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, context,
                     [answered = std::move(answered)](QDBusPendingCallWatcher* finished) {
                         const auto reply = finished->reply();
                         finished->deleteLater();
                         answered(reply.type() == QDBusMessage::ReplyMessage ? reply.arguments()
                                                                             : QVariantList());
                     });
}

/// The wait for a server; answers once and is gone.
class ServerWait final : public QObject {
public:
    ServerWait(const ChildPrograms& programs, NotificationAuthorization::AuthorizationAnswer answer,
               QObject* parent)
        : QObject(parent), programs_(programs), answer_(std::move(answer)) {
        auto* watcher = new QDBusServiceWatcher(notificationService, QDBusConnection::sessionBus(),
                                                QDBusServiceWatcher::WatchForRegistration, this);
        connect(watcher, &QDBusServiceWatcher::serviceRegistered, this, [this] { serverCame(); });
        QTimer::singleShot(serverPatience, this, [this] { finish(false); });
    }

    void serverCame() {
        NotificationSwitch::isOff(programs_, [wait = QPointer<ServerWait>(this)](bool isOff) {
            if (wait) {
                wait->finish(!isOff);
            }
        });
    }

private:
    void finish(bool isGranted) {
        if (answer_) {
            std::exchange(answer_, {})(isGranted, {});
            deleteLater();
        }
    }

    const ChildPrograms& programs_;
    NotificationAuthorization::AuthorizationAnswer answer_;
};

} // namespace

void NotificationAuthorization::readStatus(SettingsAnswer answer) {
    const auto shared = std::make_shared<SettingsAnswer>(std::move(answer));
    askForServer([this, shared](bool isThere) {
        if (!isThere) {
            (*shared)(AuthorizationStatus::notDetermined);
            return;
        }
        NotificationSwitch::isOff(programs_, [shared](bool isOff) {
            (*shared)(isOff ? AuthorizationStatus::denied : AuthorizationStatus::authorized);
        });
    });
}

void NotificationAuthorization::request(AuthorizationAnswer answer) {
    if (!QDBusConnection::sessionBus().isConnected()) {
        answer(false, QStringLiteral("there is no session bus"));
        return;
    }
    auto* wait = new ServerWait(programs_, std::move(answer), this);
    askForServer([wait = QPointer<ServerWait>(wait)](bool isThere) {
        if (isThere && wait) {
            wait->serverCame(); // it came just before the wait began
        }
    });
}

void NotificationAuthorization::askForServer(std::function<void(bool isThere)> answer) {
    if (!QDBusConnection::sessionBus().isConnected()) {
        answer(false);
        return;
    }
    askBus(this, QStringLiteral("NameHasOwner"), {notificationService},
           [this, answer = std::move(answer)](const QVariantList& hasOwner) {
               if (hasOwner.value(0).toBool()) {
                   answer(true);
                   return;
               }
               askBus(this, QStringLiteral("ListActivatableNames"), {}, [answer](const QVariantList& names) {
                   answer(names.value(0).toStringList().contains(notificationService));
               });
           });
}

} // namespace brenvale
