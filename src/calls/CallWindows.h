#pragma once

#include "calls/ActiveCallBanner.h"
#include "calls/IncomingCallBanner.h"
#include "platform/FloatingPanel.h"
#include "platform/InternalNotifications.h"
#include "records/Published.h"

#include <functional>
#include <memory>
#include <optional>

namespace brenvale {

class DispatchQueue;
class HistoryStore;
class WebSocketServer;
struct Platform;

/// Opens, updates and closes the two floating panels: the banner while the phone rings, and the call window
/// while a call runs. Nothing of a panel exists before its first call. Values and announcements are delivered
/// by a step on main, so that a panel never goes while one of its buttons is being pressed. On main.
class CallWindows final : public std::enable_shared_from_this<CallWindows> {
public:
    /// Make the panel that shows a banner, which outlives it.
    struct MakePanels {
        std::function<std::unique_ptr<FloatingPanel>(IncomingCallBanner& banner)> incoming;
        std::function<std::unique_ptr<FloatingPanel>(ActiveCallBanner& banner)> active;
    };

    /// All arguments must outlive it. Observes nothing yet.
    CallWindows(Platform& platform, DispatchQueue& main, WebSocketServer& server, HistoryStore& store,
                MakePanels makePanels);
    ~CallWindows();
    CallWindows(const CallWindows&) = delete;
    CallWindows& operator=(const CallWindows&) = delete;

    void setupIncomingCallObservation();
    void setupActiveCallObservation();
    void setupCallEndObservation();

    /// Presses the panels' buttons by name, for those who have no pointer at hand: "answer-call",
    /// "decline-call", "mute-call", "end-call". Does nothing while there is no such button, or for another
    /// name.
    void activateAction(QStringView name);

private:
    /// A panel and what it shows; the panel goes first.
    template <typename Banner>
    struct Window {
        std::unique_ptr<Banner> banner;
        std::unique_ptr<FloatingPanel> panel;
    };

    void incomingCallChanged(const std::optional<IncomingCallInfo>& info);
    void callPrepared(const InternalNotifications::Object& object);
    void callDurationUpdated(const InternalNotifications::Object& object);

    void showIncomingCallBanner(const IncomingCallInfo& info);
    void closeIncomingCallBanner();
    void showActiveCallWindow(const QString& name, const QString& number);
    void closeActiveCallWindow();
    [[nodiscard]] std::unique_ptr<IncomingCallBanner> createBannerView(const IncomingCallInfo& info);
    void answer(const IncomingCallInfo& info);
    void decline();

    /// Runs `step` on main, unless these windows are gone by then.
    void deliver(std::function<void(CallWindows&)> step);

    Platform& platform_;
    DispatchQueue& main_;
    WebSocketServer& server_;
    HistoryStore& store_;
    MakePanels makePanels_;
    Subscription incomingCall_;
    InternalNotifications::Observation activeCall_;
    InternalNotifications::Observation callEnd_;
    std::optional<Window<IncomingCallBanner>> incomingCallWindow_; ///< there while the phone rings
    std::optional<Window<ActiveCallBanner>> activeCallWindow_;     ///< there while a call runs
};

} // namespace brenvale
