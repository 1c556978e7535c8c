#include "calls/CallWindows.h"

#include "link/WebSocketServer.h"
#include "platform/DispatchQueue.h"
#include "platform/Log.h"
#include "platform/Platform.h"
#include "records/HistoryStore.h"

#include <utility>

namespace brenvale {

CallWindows::CallWindows(Platform& platform, DispatchQueue& main, WebSocketServer& server,
                         HistoryStore& store, MakePanels makePanels)
    : platform_(platform), main_(main), server_(server), store_(store), makePanels_(std::move(makePanels)) {}

CallWindows::~CallWindows() = default;

void CallWindows::setupIncomingCallObservation() {
    incomingCall_ = store_.incomingCallInfo.subscribe([this](const std::optional<IncomingCallInfo>& info) {
        deliver([info](CallWindows& windows) { windows.incomingCallChanged(info); });
    });
}

void CallWindows::setupActiveCallObservation() {
    activeCall_ = platform_.internalNotifications.addObserver(
        InternalNotifications::prepareActiveCall, [this](const auto& object) {
            deliver([object](CallWindows& windows) { windows.callPrepared(object); });
        });
}

void CallWindows::setupCallEndObservation() {
    callEnd_ = platform_.internalNotifications.addObserver(
        InternalNotifications::callDurationUpdated, [this](const auto& object) {
            deliver([object](CallWindows& windows) { windows.callDurationUpdated(object); });
        });
}

void CallWindows::deliver(std::function<void(CallWindows&)> step) {
    main_.async([weak = weak_from_this(), step = std::move(step)] {
        if (const auto windows = weak.lock()) {
            step(*windows);
        }
    });
}

void CallWindows::incomingCallChanged(const std::optional<IncomingCallInfo>& info) {
    if (!info) {
        platform_.log.line("[AppDelegate] Incoming call cleared");
        closeIncomingCallBanner();
        return;
    }
    platform_.log.line("[AppDelegate] Incoming call detected: " + info->number.toUtf8());
    showIncomingCallBanner(*info);
}

void CallWindows::showIncomingCallBanner(const IncomingCallInfo& info) {
    if (incomingCallWindow_) {
        incomingCallWindow_->banner->setInfo(info);
    } else {
        auto& window = incomingCallWindow_.emplace(createBannerView(info));
        window.panel = makePanels_.incoming(*window.banner);
    }
    incomingCallWindow_->panel->orderFrontRegardless();
}

std::unique_ptr<IncomingCallBanner> CallWindows::createBannerView(const IncomingCallInfo& info) {
    auto banner = std::make_unique<IncomingCallBanner>(info);
    banner->onAnswer = [this, shown = banner.get()] {
        answer(shown->info());
    };
    banner->onHangup = [this] {
        decline();
    };
    return banner;
}

void CallWindows::answer(const IncomingCallInfo& info) {
    server_.answerCall();
    platform_.internalNotifications.post(
        InternalNotifications::prepareActiveCall,
        PreparedCall{.number = info.number, .name = info.name.value_or(QString())});
    store_.incomingCallInfo.set({}); // closes the banner
}

void CallWindows::decline() {
    server_.hangupCall();
    store_.incomingCallInfo.set({});
}

void CallWindows::closeIncomingCallBanner() {
    if (incomingCallWindow_) {
        incomingCallWindow_->panel->orderOut();
        incomingCallWindow_.reset();
    }
}

void CallWindows::callPrepared(const InternalNotifications::Object& object) {
    PreparedCall call;
    if (const auto* prepared = std::get_if<PreparedCall>(&object)) {
        call = *prepared;
    } else if (const auto* number = std::get_if<QString>(&object)) {
        call.number = *number;
    }
    if (!call.number.isEmpty()) {
        showActiveCallWindow(call.name, call.number);
    }
}

void CallWindows::showActiveCallWindow(const QString& name, const QString& number) {
    if (activeCallWindow_) {
        return; // one that was left open is used as it is, with its old texts
    }
    auto& window = activeCallWindow_.emplace(std::make_unique<ActiveCallBanner>(
        PreparedCall{.number = number, .name = name}, platform_.internalNotifications, server_));
    window.panel = makePanels_.active(*window.banner);
    window.panel->orderFrontRegardless();
}

void CallWindows::closeActiveCallWindow() {
    if (activeCallWindow_) {
        activeCallWindow_->panel->orderOut();
        activeCallWindow_.reset();
    }
}

void CallWindows::callDurationUpdated(const InternalNotifications::Object& object) {
    const auto* seconds = std::get_if<qint64>(&object);
    if (seconds != nullptr && *seconds == InternalNotifications::callIsOver) {
        store_.incomingCallInfo.set({});
        closeActiveCallWindow();
    }
}

void CallWindows::activateAction(QStringView name) {
    if (incomingCallWindow_ && name == u"answer-call") {
        incomingCallWindow_->banner->answer();
    } else if (incomingCallWindow_ && name == u"decline-call") {
        incomingCallWindow_->banner->hangUp();
    } else if (activeCallWindow_ && name == u"mute-call") {
        activeCallWindow_->banner->toggleMute();
    } else if (activeCallWindow_ && name == u"end-call") {
        activeCallWindow_->banner->hangUp();
    }
}

} // namespace brenvale
