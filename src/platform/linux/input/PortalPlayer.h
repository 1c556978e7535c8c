#pragma once

#include "platform/linux/input/LayoutReader.h"
#include "platform/linux/input/PortalSteps.h"

#include <QDBusConnection>
#include <QObject>
#include <QTimer>

#include <deque>
#include <functional>

namespace brenvale {

class PortalSession;
class TextLender;

/// Brings events to an open session, one call after the other: the portal deals with calls in threads of its
/// own, so that only the answer to one keeps the next behind it. One thread, with an event loop; never
/// blocks.
class PortalPlayer final : public QObject {
public:
    /// `lender` is null where no text can be pasted. All others live for longer.
    PortalPlayer(QDBusConnection bus, PortalSession& session, PostedEvents& events, TextLender* lender);

    /// The session has opened: events are to be brought to it.
    void begin();

    /// The session has ended: what waits is gone.
    void end();

    /// Goes on if there is something to do.
    void advance();

private:
    [[nodiscard]] bool takeSteps();
    [[nodiscard]] QString joinedText(QString text);
    void perform(const PortalNotify& notify);
    void perform(const PortalPause& pause);
    void perform(const PortalPaste& paste);
    void pasteLent(const QString& text, bool isLent);
    void giveBack();
    void put(PortalSteps steps);
    void done(quint64 run);

    QDBusConnection bus_;
    PortalSession& session_;
    PostedEvents& events_;
    TextLender* lender_;
    LayoutReader layouts_;
    std::deque<PortalStep> steps_;
    bool isBusy_ = false;
    quint64 run_ = 0; ///< of this session: what an earlier one has started ends unseen; 0 is none
    quint64 runs_ = 0;
    bool hasLoan_ = false; ///< asked for, or standing
    QTimer loan_;          ///< while a program pastes
};

} // namespace brenvale
