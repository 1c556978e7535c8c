#include "platform/linux/input/PortalSession.h"

#include "platform/linux/input/ConsentMemory.h"
#include "platform/linux/input/PortalNames.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QTimer>
#include <QUuid>

#include <chrono>

namespace brenvale {

namespace {

const QString propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");
const QString deviceTypesProperty = QStringLiteral("AvailableDeviceTypes");
const QString sessionInterface = QStringLiteral("org.freedesktop.portal.Session");

constexpr uint keyboardAndPointer = 3;
constexpr uint untilRevoked = 2;

/// A session that opens within this time was remembered: nobody reads a dialog as fast.
constexpr qint64 fastestAnswer = 400;

constexpr std::chrono::seconds restartTime{2};

} // namespace

PortalSession::PortalSession(QDBusConnection bus) : bus_(std::move(bus)) {
    auto* watcher =
        new QDBusServiceWatcher(portalService, bus_, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString& /*service*/, const QString& before, const QString& now) {
                if (!before.isEmpty()) {
                    portalGone();
                }
                if (!now.isEmpty()) {
                    lookForPortal();
                }
            });
    bus_.connect(portalService, portalPath, propertiesInterface, QStringLiteral("PropertiesChanged"), this,
                 SLOT(propertiesChanged(QString)));
    lookForPortal();
}

/// What the desktop has behind the portal may start later than the portal.
void PortalSession::propertiesChanged(const QString& interface) {
    if (interface == remoteDesktopInterface && !isHere()) {
        lookForPortal();
    }
}

/// The bus starts a portal that is installed and not running.
void PortalSession::lookForPortal() {
    auto message =
        QDBusMessage::createMethodCall(portalService, portalPath, propertiesInterface, QStringLiteral("Get"));
    message << remoteDesktopInterface << deviceTypesProperty;
    auto* watcher = new QDBusPendingCallWatcher(bus_.asyncCall(message, portalPatience), this);
    ++looks_;
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        --looks_;
        const QDBusPendingReply<QDBusVariant> reply = *watcher;
        if (reply.isError()) {
            portalMissing(reply.error().type());
        } else {
            portalFound(reply.value().variant().toUInt());
        }
    });
}

/// Without devices its back end may still be starting.

void PortalSession::portalFound(uint deviceTypes) {
    if (isHere()) {
        return;
    }
    if ((deviceTypes & keyboardAndPointer) != keyboardAndPointer) {
        setState(State::absent);
        return;
    }
    wasHere_ = true;
    setState(State::closed);
    if (wish_) {
        open(*wish_);
    }
}

/// Silence says nothing: a portal that is slow may have a dialog yet.
void PortalSession::portalMissing(QDBusError::ErrorType error) {
    using enum QDBusError::ErrorType;
    const bool isCertain = error == ServiceUnknown || error == UnknownObject || error == UnknownInterface ||
                           error == UnknownProperty || error == InvalidArgs;
    if (!isHere()) {
        setState(isCertain && !wasHere_ ? State::none : State::absent);
    }
}

void PortalSession::portalGone() {
    if (state_ == State::open && !ConsentMemory::token().isEmpty()) {
        wish_ = InputConsent::Occasion::start;
    }
    forgetSession(State::absent);
    QTimer::singleShot(restartTime, this, [this] {
        if (!isHere()) {
            lookForPortal();
        }
    });
}

void PortalSession::open(InputConsent::Occasion occasion) {
    if (!isHere()) {
        wish_ = occasion;
        if (looks_ == 0) {
            lookForPortal();
        }
        return;
    }
    wish_.reset();
    if (state_ != State::closed ||
        (occasion == InputConsent::Occasion::start && ConsentMemory::wasRefused())) {
        return;
    }
    ++attempt_;
    setState(State::asking);
    registerProgram();
}

/// So that the dialog names us. A portal that cannot do that, or does not know our desktop entry, asks for
/// some program: still better than nothing.
void PortalSession::registerProgram() {
    auto message = QDBusMessage::createMethodCall(portalService, portalPath,
                                                  QStringLiteral("org.freedesktop.host.portal.Registry"),
                                                  QStringLiteral("Register"));
    message << QStringLiteral("org.brenvale.Brenvale") << QVariantMap();
    auto* watcher = new QDBusPendingCallWatcher(bus_.asyncCall(message, portalPatience), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, attempt = attempt_] {
        watcher->deleteLater();
        if (state_ == State::asking && attempt == attempt_) {
            createSession();
        }
    });
}

void PortalSession::request(const QString& method, const QVariantList& arguments, const QVariantMap& options,
                            PortalRequest::Answered answered) {
    PortalRequest::make(
        bus_,
        {.interface = remoteDesktopInterface, .method = method, .arguments = arguments, .options = options},
        this, [this, attempt = attempt_, answered = std::move(answered)](const auto& results) {
            if (state_ == State::asking && attempt == attempt_) {
                answered(results);
            } // else the session ended meanwhile
        });
}

void PortalSession::createSession() {
    const auto token = QStringLiteral("brenvale_") + QUuid::createUuid().toString(QUuid::Id128);
    request(QStringLiteral("CreateSession"), {}, {{QStringLiteral("session_handle_token"), token}},
            [this](const auto& results) {
                if (results) {
                    created(results->value(QStringLiteral("session_handle")).toString());
                } else {
                    close();
                }
            });
}

void PortalSession::created(const QString& handle) {
    handle_ = handle;
    bus_.connect(portalService, handle_, sessionInterface, QStringLiteral("Closed"), this,
                 SLOT(sessionClosed()));
    selectDevices();
}

void PortalSession::selectDevices() {
    QVariantMap options{{QStringLiteral("types"), keyboardAndPointer},
                        {QStringLiteral("persist_mode"), untilRevoked}};
    if (const auto token = ConsentMemory::token(); !token.isEmpty()) {
        options.insert(QStringLiteral("restore_token"), token);
    }
    request(QStringLiteral("SelectDevices"), {QVariant::fromValue(handle())}, options,
            [this](const auto& results) { results ? start() : close(); });
}

void PortalSession::start() {
    asked_.start();
    const QString noParentWindow;
    request(QStringLiteral("Start"), {QVariant::fromValue(handle()), noParentWindow}, {},
            [this](const auto& results) { started(results); });
}

void PortalSession::started(const PortalRequest::Results& results) {
    followsDialog_ = asked_.elapsed() > fastestAnswer;
    const auto devices = results ? results->value(QStringLiteral("devices")).toUInt() : 0;
    if (!results || (devices & keyboardAndPointer) != keyboardAndPointer) {
        if (results || results.error() == PortalRequest::Failure::refused) {
            // Keys without a pointer, or the other way round, are a refusal too.
            ConsentMemory::keepRefusal(true);
        }
        close();
        return;
    }
    ConsentMemory::keepRefusal(false);
    if (const auto token = results->value(QStringLiteral("restore_token")).toString(); !token.isEmpty()) {
        ConsentMemory::keepToken(token);
    }
    setState(State::open);
}

/// Ends what the desktop may show as a session that is running.
void PortalSession::close() {
    if (!handle_.isEmpty()) {
        bus_.send(QDBusMessage::createMethodCall(portalService, handle_, sessionInterface,
                                                 QStringLiteral("Close")));
    }
    forgetSession(State::closed);
}

void PortalSession::sessionClosed() {
    forgetSession(State::closed);
}

void PortalSession::forgetSession(State state) {
    if (!handle_.isEmpty()) {
        bus_.disconnect(portalService, handle_, sessionInterface, QStringLiteral("Closed"), this,
                        SLOT(sessionClosed()));
        handle_.clear();
    }
    setState(state);
}

void PortalSession::setState(State state) {
    if (std::exchange(state_, state) != state && changed) {
        changed();
    }
}

} // namespace brenvale
