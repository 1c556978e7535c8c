#pragma once

#include "calls/CallerText.h"
#include "platform/InternalNotifications.h"
#include "records/PreparedCall.h"

#include <QObject>

namespace brenvale {

class WebSocketServer;

/// What the panel of a running call shows: the other party, the time, mute and hang-up. It counts nothing by
/// itself, the time moves when the phone reports. Whether it is muted is known here alone: the phone does not
/// tell, and each call starts unmuted. On main.
class ActiveCallBanner final : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString firstLine READ firstLine CONSTANT)
    Q_PROPERTY(QString secondLine READ secondLine CONSTANT)
    Q_PROPERTY(QString thirdLine READ thirdLine NOTIFY durationChanged)
    Q_PROPERTY(bool isMuted READ isMuted NOTIFY isMutedChanged)

public:
    /// `notifications` and `server` must outlive the banner.
    ActiveCallBanner(const PreparedCall& call, InternalNotifications& notifications, WebSocketServer& server);

    [[nodiscard]] const QString& firstLine() const { return text_.firstLine; }
    [[nodiscard]] const QString& secondLine() const { return text_.secondLine; } ///< empty: not shown
    [[nodiscard]] QString thirdLine() const;
    [[nodiscard]] bool isMuted() const { return isMuted_; }

public slots:
    void toggleMute();

    /// Asks the phone to hang up. The panel stays until the phone says that the call has ended.
    void hangUp() const;

signals:
    void durationChanged();
    void isMutedChanged();

private:
    void durationUpdated(const InternalNotifications::Object& object);

    CallerText text_;
    WebSocketServer& server_;
    qint64 duration_ = 0; ///< seconds
    bool isMuted_ = false;
    InternalNotifications::Observation observation_;
};

} // namespace brenvale
