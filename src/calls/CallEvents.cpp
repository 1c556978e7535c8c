#include "calls/CallEvent.h"
#include "link/Json.h"
#include "link/WebSocketServer.h"
#include "platform/InternalNotifications.h"
#include "platform/Log.h"
#include "platform/Platform.h"
#include "records/HistoryStore.h"

namespace brenvale {

void WebSocketServer::handleCallEvent(const JsonObject& json) {
    const auto action = json.utf8("action").value_or("");
    platform_.log.line("[WebSocketServer] Call Event: " +
                       QByteArray(action.data(), static_cast<qsizetype>(action.size())));
    const auto outcome = interpretCall(action, json);
    if (const auto* report = std::get_if<CallReport>(&outcome)) {
        showCall(*report);
        return;
    }
    onMain([&center = platform_.internalNotifications](HistoryStore* store) {
        if (store != nullptr) {
            store->incomingCallInfo.set({});
        }
        center.post(InternalNotifications::callDurationUpdated, InternalNotifications::callIsOver);
    });
}

void WebSocketServer::showCall(const CallReport& report) {
    if (report.banner == CallReport::Banner::show) {
        platform_.log.line("[WebSocketServer] Setting Banner Info: " + report.caller.number.toUtf8());
    }
    if (report.banner != CallReport::Banner::keep) {
        const bool isShown = report.banner == CallReport::Banner::show;
        onStore([caller = isShown ? std::optional(report.caller) : std::nullopt](HistoryStore& store) {
            store.incomingCallInfo.set(caller);
        });
    }
    if (report.duration) {
        onMain([&center = platform_.internalNotifications, duration = *report.duration](HistoryStore*) {
            center.post(InternalNotifications::callDurationUpdated, duration);
        });
    }
}

} // namespace brenvale
