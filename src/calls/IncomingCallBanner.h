#pragma once

#include "calls/CallerText.h"

#include <QObject>

#include <functional>

namespace brenvale {

/// What the panel of a ringing call shows: who calls, "Accept" and "Decline". On main.
class IncomingCallBanner final : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString firstLine READ firstLine NOTIFY infoChanged)
    Q_PROPERTY(QString secondLine READ secondLine NOTIFY infoChanged)

public:
    explicit IncomingCallBanner(IncomingCallInfo info);

    [[nodiscard]] const IncomingCallInfo& info() const { return info_; }
    [[nodiscard]] const QString& firstLine() const { return text_.firstLine; }
    [[nodiscard]] const QString& secondLine() const { return text_.secondLine; } ///< empty: not shown

    /// The phone rings on and says more, or something else, of the caller.
    void setInfo(IncomingCallInfo info);

    /// The user accepts or declines. Set before the banner is shown; neither may end the banner at once.
    std::function<void()> onAnswer;
    std::function<void()> onHangup;

public slots:
    void answer() const { onAnswer(); }
    void hangUp() const { onHangup(); }

signals:
    void infoChanged();

private:
    IncomingCallInfo info_;
    CallerText text_;
};

} // namespace brenvale
