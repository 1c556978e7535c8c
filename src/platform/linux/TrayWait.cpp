#include "platform/linux/TrayWait.h"

#include "platform/linux/X11Connection.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QTimer>

#include <chrono>
#include <cstdlib>
#include <memory>

#include <xcb/xcb.h>

namespace brenvale {

namespace {

const QString watcherService = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString watcherPath = QStringLiteral("/StatusNotifierWatcher");

/// What a panel takes to come up after login; then a tray of the old kind serves as well, and without one
/// there is none.
constexpr std::chrono::seconds panelPatience{10};

/// Whether an X11 tray of the first screen is there (System Tray Protocol of freedesktop.org).
bool hasOldTray(xcb_connection_t* connection) {
    const auto selection = x11Atom(connection, "_NET_SYSTEM_TRAY_S0");
    const std::unique_ptr<xcb_get_selection_owner_reply_t, decltype(&std::free)> owner(
        xcb_get_selection_owner_reply(connection, xcb_get_selection_owner(connection, selection), nullptr),
        std::free);
    return owner && owner->owner != XCB_WINDOW_NONE;
}

} // namespace

TrayWait::TrayWait(std::function<void()> found, std::function<void()> missing)
    : found_(std::move(found)), missing_(std::move(missing)) {
    auto bus = QDBusConnection::sessionBus();
    if (bus.isConnected()) {
        auto* watcher =
            new QDBusServiceWatcher(watcherService, bus, QDBusServiceWatcher::WatchForRegistration, this);
        connect(watcher, &QDBusServiceWatcher::serviceRegistered, this, &TrayWait::askForHost);
        bus.connect(watcherService, watcherPath, watcherService,
                    QStringLiteral("StatusNotifierHostRegistered"), this, SLOT(askForHost()));
        askForHost();
    }
    if (x11Connection() != nullptr) {
        QCoreApplication::instance()->installNativeEventFilter(this);
    }
    QTimer::singleShot(panelPatience, this, &TrayWait::endPatience);
}

TrayWait::~TrayWait() {
    if (auto* application = QCoreApplication::instance()) {
        application->removeNativeEventFilter(this);
    }
}

void TrayWait::askForHost() {
    auto message = QDBusMessage::createMethodCall(watcherService, watcherPath,
                                                  QStringLiteral("org.freedesktop.DBus.Properties"),
                                                  QStringLiteral("Get"));
    message << watcherService << QStringLiteral("IsStatusNotifierHostRegistered");
    message.setAutoStartService(false);
    auto* call = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(message), this);
    connect(call, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* finished) {
        const QDBusPendingReply<QDBusVariant> reply = *finished;
        finished->deleteLater();
        if (!reply.isError() && reply.value().variant().toBool()) {
            finish();
        }
    });
}

void TrayWait::endPatience() {
    hadItsChance_ = true;
    if (x11Connection() != nullptr) {
        lookForOldTray();
    }
    if (found_) {
        missing_();
    }
}

bool TrayWait::nativeEventFilter(const QByteArray& eventType, void* message, qintptr* /*result*/) {
    if (found_ && hadItsChance_ && eventType == "xcb_generic_event_t") {
        constexpr int sentBit = 0x80;
        const auto* event = static_cast<const xcb_generic_event_t*>(message);
        if ((event->response_type & ~sentBit) == XCB_CLIENT_MESSAGE) {
            lookForOldTray(); // a tray that comes up tells the root window so
        }
    }
    return false;
}

void TrayWait::lookForOldTray() {
    if (found_ && hasOldTray(x11Connection())) {
        finish();
    }
}

void TrayWait::finish() {
    if (found_) {
        QTimer::singleShot(0, this, std::exchange(found_, {}));
    }
}

} // namespace brenvale
