#pragma once

#include "SeenInput.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>

#include <functional>
#include <mutex>

namespace brenvale {

/// The desktop's clipboard, as far as a text is pasted from it. Any thread.
class TestClipboard {
public:
    void put(const QString& text) {
        const std::scoped_lock lock(mutex_);
        text_ = text;
    }
    [[nodiscard]] QString text() const {
        const std::scoped_lock lock(mutex_);
        return text_;
    }

private:
    mutable std::mutex mutex_;
    QString text_; ///< guarded by mutex_
};

/// The portal of a desktop with the layout "us" (org.freedesktop.portal.RemoteDesktop, version 2), whose user
/// consents to whatever is asked. It takes calls as real ones do: of the right types alone, for a session
/// that was started alone, each second one a moment later than the next; what the layout lacks it drops
/// without a word. Shift and Insert paste. On a thread with an event loop, to which it is moved.
class PortalDouble final : public QDBusVirtualObject {
public:
    PortalDouble(QDBusConnection bus, SeenInput& seen, const TestClipboard& clipboard)
        : bus_(std::move(bus)), seen_(seen), clipboard_(clipboard) {}

    /// False where the bus has such a portal already.
    [[nodiscard]] bool offer();

    /// Ends the session as the user does by the mark that the desktop shows. Any thread that holds
    /// `standstill`.
    void closeSession();

    /// Whoever holds it keeps calls from being dealt with.
    [[nodiscard]] std::mutex& standstill() { return standstill_; }

    [[nodiscard]] QString introspect(const QString& /*path*/) const override { return {}; }
    [[nodiscard]] bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override;

private:
    void deal(const QDBusMessage& message);
    void answerRequest(const QDBusMessage& message, const QVariantMap& results);
    void createSession(const QDBusMessage& message);
    void notify(const QDBusMessage& message);
    void keycode(quint16 code, bool isDown);
    void keysym(xkb_keysym_t keysym, bool isDown);

    QDBusConnection bus_;
    SeenInput& seen_;
    const TestClipboard& clipboard_;
    UsKeyboard keyboard_;
    QString session_; ///< empty while there is none
    bool isStarted_ = false;
    quint64 calls_ = 0;
    std::mutex standstill_;
};

} // namespace brenvale
