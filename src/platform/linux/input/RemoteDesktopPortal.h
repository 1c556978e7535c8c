#pragma once

#include "platform/EventPoster.h"
#include "platform/linux/input/InputConsent.h"

#include <QObject>
#include <QVariantMap>

#include <atomic>
#include <variant>

namespace brenvale {

/// The desktop's consent to keys and pointer events, where the desktop has no other way to them
/// (org.freedesktop.portal.RemoteDesktop, version 1; with version 2 the desktop remembers the consent by a
/// token that it gives us to keep). On main.
class RemoteDesktopPortal final : public QObject, public EventPoster, public InputConsent {
    Q_OBJECT

public:
    RemoteDesktopPortal();

    /// Whether the user has consented and the session still stands.
    [[nodiscard]] bool canMakeEvents() const override { return state_ == State::started; }
    [[nodiscard]] QPointF pointerLocation() const override { return {}; }
    void post(const KeyEvent& /*event*/) override {}
    void post(const SystemDefinedEvent& /*event*/) override {}
    void post(const MouseEvent& /*event*/) override {}

    [[nodiscard]] bool canAsk() const override { return canAsk_; }
    [[nodiscard]] bool wasRefused() const override;
    void ask() override;
    [[nodiscard]] Subscription observe(std::function<void()> observer) override;

private slots:
    void sessionClosed();

private:
    enum class State : qint8 { none, starting, started };

    void opened(const QString& session);
    void selectDevices();
    void startSession();
    void started(const QVariantMap& results);
    void closeSession();
    void forgetSession();

    void setState(State state);

    std::atomic<State> state_ = State::none;
    std::atomic<bool> canAsk_ = false;
    Published<std::monostate> change_;
    QString session_; ///< its object path; empty while there is none
};

} // namespace brenvale
