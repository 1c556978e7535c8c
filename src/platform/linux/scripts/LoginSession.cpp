#include "platform/linux/scripts/LoginSession.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include <array>
#include <memory>
#include <utility>

namespace brenvale {

namespace {

enum class Bus : quint8 { session, system };

struct Service {
    Bus bus;
    const char* name;
    const char* path;
    const char* interface;
    const char* method;
};

// "auto" is the session that this program is in or, where it is in none, as under a user's service manager,
// the one that the user sits at.
constexpr std::array lockServices{
    Service{Bus::system, "org.freedesktop.login1", "/org/freedesktop/login1/session/auto",
            "org.freedesktop.login1.Session", "Lock"},
    Service{Bus::session, "org.freedesktop.ScreenSaver", "/org/freedesktop/ScreenSaver",
            "org.freedesktop.ScreenSaver", "Lock"},
    Service{Bus::session, "org.gnome.ScreenSaver", "/org/gnome/ScreenSaver", "org.gnome.ScreenSaver", "Lock"},
    Service{Bus::session, "org.mate.ScreenSaver", "/org/mate/ScreenSaver", "org.mate.ScreenSaver", "Lock"},
    Service{Bus::session, "org.xfce.ScreenSaver", "/org/xfce/ScreenSaver", "org.xfce.ScreenSaver", "Lock"},
};

constexpr Service sleepService{Bus::system, "org.freedesktop.login1", "/org/freedesktop/login1",
                               "org.freedesktop.login1.Manager", "Suspend"};

// A screen saver may answer only when the screen is locked; logind, when it has begun.
constexpr int patience = 3'000;

/// A call that is under way, or has failed already for want of a bus.
QDBusPendingCall sent(Bus bus, const QDBusMessage& message) {
    auto connection = bus == Bus::system ? QDBusConnection::systemBus() : QDBusConnection::sessionBus();
    if (!connection.isConnected()) { // such a one makes calls that never end
        return QDBusPendingCall::fromError(QDBusError(QDBusError::Disconnected, QString()));
    }
    return connection.asyncCall(message, patience);
}

/// Why a call failed, for people.
QString reason(const QDBusError& error) {
    switch (error.type()) {
    case QDBusError::NoReply:
    case QDBusError::Timeout:
    case QDBusError::TimedOut:
        return QStringLiteral("it does not answer");
    case QDBusError::ServiceUnknown:
        return QStringLiteral("it is not running");
    case QDBusError::Disconnected:
        return QStringLiteral("there is no bus");
    default:
        return error.message().isEmpty() ? error.name() : error.message();
    }
}

/// Calls the service; `answered` gets nothing, or why that failed.
void call(const Service& service, const QVariantList& arguments, ScriptDone answered) {
    auto message = QDBusMessage::createMethodCall(
        QString::fromLatin1(service.name), QString::fromLatin1(service.path),
        QString::fromLatin1(service.interface), QString::fromLatin1(service.method));
    message.setArguments(arguments);
    // The system's services are there when they are asked. A screen saver that does not run is none.
    message.setAutoStartService(service.bus == Bus::system);
    const auto pending = sent(service.bus, message);
    auto* watcher = new QDBusPendingCallWatcher(pending); // NOLINT: it deletes itself
    const auto shared = std::make_shared<ScriptDone>(std::move(answered));
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher,
                     [shared, name = service.name](QDBusPendingCallWatcher* finished) {
                         finished->deleteLater();
                         if (finished->isError()) {
                             (*shared)(QStringLiteral("%1: %2.").arg(QString::fromLatin1(name),
                                                                     reason(finished->error())));
                         } else {
                             (*shared)(std::nullopt);
                         }
                     });
}

/// Asks the services from the one with the number `next` on; the first failure is the one that is told.
void lockBy(std::size_t next, const std::optional<QString>& firstFailure, ScriptDone done) {
    if (next == lockServices.size()) {
        done(firstFailure);
        return;
    }
    call(lockServices.at(next), {},
         [next, firstFailure, done = std::move(done)](const std::optional<QString>& error) mutable {
             if (!error) {
                 done(std::nullopt);
             } else {
                 lockBy(next + 1, firstFailure ? firstFailure : error, std::move(done));
             }
         });
}

} // namespace

void lockScreen(ScriptDone done) {
    lockBy(0, {}, std::move(done));
}

void sleepComputer(ScriptDone done) {
    constexpr bool mayAskUser = false;
    call(sleepService, {mayAskUser}, std::move(done));
}

} // namespace brenvale
