#include "PortalDouble.h"

#include "platform/linux/input/PortalNames.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QHash>
#include <QTimer>

#include <chrono>

#include <linux/input-event-codes.h>

namespace brenvale {

namespace {

/// The types of each method's arguments. A real portal knows no other.
const QHash<QString, QString>& signatures() {
    static const QHash<QString, QString> all{
        {QStringLiteral("Get"), QStringLiteral("ss")},
        {QStringLiteral("Register"), QStringLiteral("sa{sv}")},
        {QStringLiteral("CreateSession"), QStringLiteral("a{sv}")},
        {QStringLiteral("SelectDevices"), QStringLiteral("oa{sv}")},
        {QStringLiteral("Start"), QStringLiteral("osa{sv}")},
        {QStringLiteral("Close"), QString()},
        {QStringLiteral("NotifyPointerMotion"), QStringLiteral("oa{sv}dd")},
        {QStringLiteral("NotifyPointerButton"), QStringLiteral("oa{sv}iu")},
        {QStringLiteral("NotifyKeyboardKeycode"), QStringLiteral("oa{sv}iu")},
        {QStringLiteral("NotifyKeyboardKeysym"), QStringLiteral("oa{sv}iu")},
    };
    return all;
}

QString pathFor(const QString& kind, const QDBusMessage& message, const QString& tokenName) {
    const auto options = qdbus_cast<QVariantMap>(message.arguments().constLast());
    auto sender = message.service().mid(1);
    return portalPath + u'/' + kind + u'/' + sender.replace(u'.', u'_') + u'/' +
           options.value(tokenName).toString();
}

QString sessionIn(const QDBusMessage& message) {
    return message.arguments().constFirst().value<QDBusObjectPath>().path();
}

} // namespace

bool PortalDouble::offer() {
    return bus_.registerVirtualObject(portalPath, this, QDBusConnection::SubPath) &&
           bus_.registerService(portalService);
}

void PortalDouble::closeSession() {
    auto closed = QDBusMessage::createSignal(session_, QStringLiteral("org.freedesktop.portal.Session"),
                                             QStringLiteral("Closed"));
    closed << QVariantMap();
    bus_.send(closed);
    session_.clear();
    isStarted_ = false;
    keyboard_ = UsKeyboard(); // a desktop lets go of the keys with the session
}

bool PortalDouble::handleMessage(const QDBusMessage& message, const QDBusConnection& /*bus*/) {
    const auto signature = signatures().constFind(message.member());
    if (signature == signatures().constEnd() || *signature != message.signature()) {
        return false; // the bus library answers that there is no such method
    }
    using std::chrono::milliseconds;
    QTimer::singleShot(milliseconds(++calls_ % 2), this, [this, message] {
        const std::scoped_lock moving(standstill_);
        deal(message);
    });
    return true;
}

void PortalDouble::deal(const QDBusMessage& message) {
    const auto method = message.member();
    constexpr uint keyboardAndPointer = 3;
    if (method.startsWith(QStringLiteral("Notify"))) {
        notify(message);
    } else if (method == u"Get") {
        bus_.send(message.createReply(QVariant::fromValue(QDBusVariant(keyboardAndPointer))));
    } else if (method == u"CreateSession") {
        createSession(message);
    } else if (method == u"SelectDevices") {
        answerRequest(message, {});
    } else if (method == u"Start") {
        isStarted_ = sessionIn(message) == session_;
        answerRequest(message, {{QStringLiteral("devices"), keyboardAndPointer},
                                {QStringLiteral("restore_token"), QStringLiteral("kept")}});
    } else {
        isStarted_ = isStarted_ && method != u"Close";
        bus_.send(message.createReply());
    }
}

void PortalDouble::answerRequest(const QDBusMessage& message, const QVariantMap& results) {
    const auto path = pathFor(QStringLiteral("request"), message, QStringLiteral("handle_token"));
    bus_.send(message.createReply(QVariant::fromValue(QDBusObjectPath(path))));
    auto response = QDBusMessage::createSignal(path, QStringLiteral("org.freedesktop.portal.Request"),
                                               QStringLiteral("Response"));
    response << 0U << results;
    bus_.send(response);
}

void PortalDouble::createSession(const QDBusMessage& message) {
    session_ = pathFor(QStringLiteral("session"), message, QStringLiteral("session_handle_token"));
    answerRequest(message, {{QStringLiteral("session_handle"), session_}});
}

void PortalDouble::notify(const QDBusMessage& message) {
    if (!isStarted_ || sessionIn(message) != session_) {
        bus_.send(message.createErrorReply(QDBusError::AccessDenied, QStringLiteral("Invalid session")));
        return;
    }
    const auto method = message.member();
    const auto what = message.arguments().at(2);
    const auto state = message.arguments().at(3);
    if (method == u"NotifyPointerMotion") {
        seen_.move({what.toDouble(), state.toDouble()});
    } else if (method == u"NotifyPointerButton") {
        seen_.button(what.toInt() == BTN_RIGHT, state.toUInt() == 1);
    } else if (method == u"NotifyKeyboardKeycode") {
        keycode(static_cast<quint16>(what.toInt()), state.toUInt() == 1);
    } else {
        keysym(static_cast<xkb_keysym_t>(what.toInt()), state.toUInt() == 1);
    }
    bus_.send(message.createReply());
}

void PortalDouble::keycode(quint16 code, bool isDown) {
    const auto [keysym, held] = keyboard_.key(code, isDown);
    if (keysym == XKB_KEY_Insert && isDown && held == u" shift") {
        seen_.text(clipboard_.text());
    }
    seen_.key(keysym, isDown, held);
}

void PortalDouble::keysym(xkb_keysym_t keysym, bool isDown) {
    if (keyboard_.has(keysym)) {
        seen_.key(keysym, isDown, keyboard_.held());
    }
}

} // namespace brenvale
