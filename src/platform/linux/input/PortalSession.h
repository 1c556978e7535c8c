#pragma once

#include "platform/linux/input/InputConsent.h"
#include "platform/linux/input/PortalRequest.h"

#include <QDBusConnection>
#include <QDBusError>
#include <QDBusObjectPath>
#include <QElapsedTimer>
#include <QObject>

#include <functional>
#include <optional>

namespace brenvale {

/// The one session by which the desktop lets us post events, and the consent to it
/// (org.freedesktop.portal.RemoteDesktop, version 1; with version 2 the desktop remembers the consent by a
/// token that it gives us to keep). A portal that goes away takes the session with it; one that comes back
/// gets a new one without a question if there is a token. One thread, with an event loop; never blocks.
class PortalSession final : public QObject {
    Q_OBJECT

public:
    enum class State : signed char {
        none,   ///< there is no such portal, and there was none before
        absent, ///< not at present, or nobody has said yet
        closed, ///< the user can be asked
        asking,
        open,
    };

    /// `bus` is our own: the portal knows a program by its connection.
    explicit PortalSession(QDBusConnection bus);

    /// Called at each change of `state`.
    std::function<void()> changed;

    [[nodiscard]] State state() const { return state_; }

    /// The session's handle, while it is open.
    [[nodiscard]] QDBusObjectPath handle() const { return QDBusObjectPath(handle_); }

    /// Whether the user was in front of a dialog when the session opened, which has the keyboard for a moment
    /// longer.
    [[nodiscard]] bool followsDialog() const { return followsDialog_; }

    void open(InputConsent::Occasion occasion);

    /// The session is of no use any more.
    void close();

private slots:
    void sessionClosed();
    void propertiesChanged(const QString& interface);

private:
    void lookForPortal();
    void portalFound(uint deviceTypes);
    void portalMissing(QDBusError::ErrorType error);
    void portalGone();
    void registerProgram();
    void createSession();
    void created(const QString& handle);
    void selectDevices();
    void start();
    void started(const PortalRequest::Results& results);
    void request(const QString& method, const QVariantList& arguments, const QVariantMap& options,
                 PortalRequest::Answered answered);
    void forgetSession(State state);
    [[nodiscard]] bool isHere() const { return state_ >= State::closed; }
    void setState(State state);

    QDBusConnection bus_;
    State state_ = State::absent;
    bool wasHere_ = false;
    std::optional<InputConsent::Occasion> wish_; ///< to be fulfilled when there is a portal
    QString handle_;                             ///< empty while there is none
    int looks_ = 0;                              ///< for the portal, under way
    quint64 attempt_ = 0;                        ///< what an earlier one brings late is nobody's
    QElapsedTimer asked_;
    bool followsDialog_ = false;
};

} // namespace brenvale
