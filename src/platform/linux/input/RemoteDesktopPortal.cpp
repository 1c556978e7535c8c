#include "platform/linux/input/RemoteDesktopPortal.h"

#include "platform/linux/input/PortalRequest.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusServiceWatcher>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QUuid>

namespace brenvale {

namespace {

const QString portal = QStringLiteral("org.freedesktop.portal.Desktop");
const QString interface = QStringLiteral("org.freedesktop.portal.RemoteDesktop");
const QString sessionInterface = QStringLiteral("org.freedesktop.portal.Session");

constexpr uint keyboardAndPointer = 3;
constexpr uint untilRevoked = 2;

QString statePath(QLatin1StringView name) {
    auto folder = qEnvironmentVariable("XDG_STATE_HOME");
    if (!QDir::isAbsolutePath(folder)) {
        folder = QDir::homePath() + QStringLiteral("/.local/state");
    }
    return folder + QStringLiteral("/brenvale/") + name;
}

QString tokenPath() {
    return statePath(QLatin1StringView("remote-desktop-token"));
}

/// There while the user's last answer was a refusal.
QString refusalPath() {
    return statePath(QLatin1StringView("remote-desktop-refused"));
}

void keepRefusal(bool isRefused) {
    QFile file(refusalPath());
    if (!isRefused) {
        file.remove();
    } else if (QDir().mkpath(QFileInfo(refusalPath()).path())) {
        (void)file.open(QIODevice::WriteOnly);
    }
}

QString readToken() {
    QFile file(tokenPath());
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/// A token holds for one session; without a new one the user is asked again next time.
void keepToken(const QString& token) {
    QDir().mkpath(QFileInfo(tokenPath()).path());
    QSaveFile file(tokenPath());
    if (file.open(QIODevice::WriteOnly)) {
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
        file.write(token.toUtf8());
        file.commit();
    }
}

} // namespace

RemoteDesktopPortal::RemoteDesktopPortal() {
    const auto bus = QDBusConnection::sessionBus();
    if (bus.isConnected()) {
        canAsk_ = true;
        auto* watcher =
            new QDBusServiceWatcher(portal, bus, QDBusServiceWatcher::WatchForUnregistration, this);
        connect(watcher, &QDBusServiceWatcher::serviceUnregistered, this,
                &RemoteDesktopPortal::sessionClosed);
    }
}

bool RemoteDesktopPortal::wasRefused() const {
    return QFile::exists(refusalPath());
}

Subscription RemoteDesktopPortal::observe(std::function<void()> observer) {
    return change_.subscribe([observer = std::move(observer)](const auto&) { observer(); });
}

void RemoteDesktopPortal::setState(State state) {
    if (state_.exchange(state) != state) {
        change_.set({});
    }
}

void RemoteDesktopPortal::ask() {
    if (state_ != State::none || !QDBusConnection::sessionBus().isConnected()) {
        return;
    }
    setState(State::starting);
    const auto token = QStringLiteral("brenvale_") + QUuid::createUuid().toString(QUuid::Id128);
    PortalRequest::call(interface, QStringLiteral("CreateSession"), {},
                        {{QStringLiteral("session_handle_token"), token}}, [this](const auto& results) {
                            if (results) {
                                opened(results->value(QStringLiteral("session_handle")).toString());
                            } else {
                                closeSession();
                            }
                        });
}

void RemoteDesktopPortal::opened(const QString& session) {
    session_ = session;
    QDBusConnection::sessionBus().connect(portal, session_, sessionInterface, QStringLiteral("Closed"), this,
                                          SLOT(sessionClosed()));
    selectDevices();
}

void RemoteDesktopPortal::selectDevices() {
    QVariantMap options{{QStringLiteral("types"), keyboardAndPointer},
                        {QStringLiteral("persist_mode"), untilRevoked}};
    if (const auto token = readToken(); !token.isEmpty()) {
        options.insert(QStringLiteral("restore_token"), token);
    }
    PortalRequest::call(interface, QStringLiteral("SelectDevices"),
                        {QVariant::fromValue(QDBusObjectPath(session_))}, options,
                        [this](const auto& results) { results ? startSession() : closeSession(); });
}

void RemoteDesktopPortal::startSession() {
    const QString noParentWindow;
    PortalRequest::call(interface, QStringLiteral("Start"),
                        {QVariant::fromValue(QDBusObjectPath(session_)), noParentWindow}, {},
                        [this](const auto& results) {
                            if (results) {
                                started(*results);
                            } else {
                                keepRefusal(true);
                                closeSession();
                            }
                        });
}

void RemoteDesktopPortal::started(const QVariantMap& results) {
    if (const auto token = results.value(QStringLiteral("restore_token")).toString(); !token.isEmpty()) {
        keepToken(token);
    }
    const auto devices = results.value(QStringLiteral("devices")).toUInt();
    if ((devices & keyboardAndPointer) == keyboardAndPointer) {
        keepRefusal(false);
        setState(State::started);
    } else {
        closeSession();
    }
}

/// Ends a session that is of no use, which the desktop may show as one that is running.
void RemoteDesktopPortal::closeSession() {
    if (!session_.isEmpty()) {
        QDBusConnection::sessionBus().send(
            QDBusMessage::createMethodCall(portal, session_, sessionInterface, QStringLiteral("Close")));
    }
    forgetSession();
}

void RemoteDesktopPortal::sessionClosed() {
    forgetSession();
}

void RemoteDesktopPortal::forgetSession() {
    if (!session_.isEmpty()) {
        QDBusConnection::sessionBus().disconnect(portal, session_, sessionInterface, QStringLiteral("Closed"),
                                                 this, SLOT(sessionClosed()));
        session_.clear();
    }
    setState(State::none);
}

} // namespace brenvale
