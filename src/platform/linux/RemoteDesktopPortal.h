#pragma once

#include <QObject>
#include <QVariantMap>

namespace brenvale {

/// The desktop's consent to keys and pointer events, where the desktop has no other way to them
/// (org.freedesktop.portal.RemoteDesktop, version 1; with version 2 the desktop remembers the consent by a
/// token that it gives us to keep). On main.
class RemoteDesktopPortal final : public QObject {
    Q_OBJECT

public:
    RemoteDesktopPortal();

    /// Whether the user has consented and the session still stands.
    [[nodiscard]] bool isStarted() const { return state_ == State::started; }

    /// Has the desktop ask the user, unless it is asking or a session stands.
    void start();

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

    State state_ = State::none;
    QString session_; ///< its object path; empty while there is none
};

} // namespace brenvale
