#include "platform/linux/RemoteDesktopPortal.h"

#include "platform/linux/PortalRequest.h"

#include <QDBusConnection>
#include <QDBusObjectPath>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QUuid>

namespace brenvale {

namespace {

const QString interface = QStringLiteral("org.freedesktop.portal.RemoteDesktop");

constexpr uint keyboardAndPointer = 3;
constexpr uint untilRevoked = 2;

QString tokenPath() {
    auto folder = qEnvironmentVariable("XDG_STATE_HOME");
    if (!QDir::isAbsolutePath(folder)) {
        folder = QDir::homePath() + QStringLiteral("/.local/state");
    }
    return folder + QStringLiteral("/brenvale/remote-desktop-token");
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

void RemoteDesktopPortal::start() {
    if (state_ != State::none || !QDBusConnection::sessionBus().isConnected()) {
        return;
    }
    state_ = State::starting;
    const auto token = QStringLiteral("brenvale_") + QUuid::createUuid().toString(QUuid::Id128);
    PortalRequest::call(interface, QStringLiteral("CreateSession"), {},
                        {{QStringLiteral("session_handle_token"), token}}, [this](const auto& results) {
                            if (!results) {
                                failed();
                                return;
                            }
                            session_ = results->value(QStringLiteral("session_handle")).toString();
                            selectDevices();
                        });
}

void RemoteDesktopPortal::selectDevices() {
    QDBusConnection::sessionBus().connect(QStringLiteral("org.freedesktop.portal.Desktop"), session_,
                                          QStringLiteral("org.freedesktop.portal.Session"),
                                          QStringLiteral("Closed"), this, SLOT(sessionClosed()));
    QVariantMap options{{QStringLiteral("types"), keyboardAndPointer},
                        {QStringLiteral("persist_mode"), untilRevoked}};
    if (const auto token = readToken(); !token.isEmpty()) {
        options.insert(QStringLiteral("restore_token"), token);
    }
    PortalRequest::call(interface, QStringLiteral("SelectDevices"),
                        {QVariant::fromValue(QDBusObjectPath(session_))}, options,
                        [this](const auto& results) { results ? startSession() : failed(); });
}

void RemoteDesktopPortal::startSession() {
    const QString noParentWindow;
    PortalRequest::call(interface, QStringLiteral("Start"),
                        {QVariant::fromValue(QDBusObjectPath(session_)), noParentWindow}, {},
                        [this](const auto& results) { results ? started(*results) : failed(); });
}

void RemoteDesktopPortal::started(const QVariantMap& results) {
    const auto devices = results.value(QStringLiteral("devices")).toUInt();
    state_ = (devices & keyboardAndPointer) == keyboardAndPointer ? State::started : State::none;
    if (const auto token = results.value(QStringLiteral("restore_token")).toString(); !token.isEmpty()) {
        keepToken(token);
    }
}

void RemoteDesktopPortal::sessionClosed() {
    state_ = State::none;
}

} // namespace brenvale
