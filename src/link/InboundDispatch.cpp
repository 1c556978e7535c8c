#include "link/Json.h"
#include "link/WebSocketServer.h"
#include "notifications/NotificationManager.h"
#include "platform/CopyText.h"
#include "platform/InternalNotifications.h"
#include "platform/Log.h"
#include "platform/Platform.h"
#include "records/HistoryStore.h"
#include "records/RecordDecoding.h"

#include <algorithm>
#include <array>

namespace brenvale {

void WebSocketServer::handle(const MessageBuffer& data) {
    struct Branch {
        std::string_view action;
        void (WebSocketServer::*run)(const JsonObject&);
    };
    static constexpr std::array branches{
        Branch{"connected", &WebSocketServer::setDeviceName},
        Branch{"sms_history", &WebSocketServer::handleSmsHistory},
        Branch{"call_history", &WebSocketServer::handleCallHistory},
        Branch{"incoming_call", &WebSocketServer::handleCallEvent},
        Branch{"call_state_changed", &WebSocketServer::handleCallEvent},
        Branch{"call_update", &WebSocketServer::handleCallEvent},
        Branch{"call_ended", &WebSocketServer::handleCallEvent},
        Branch{"sim_info", &WebSocketServer::handleSimInfo},
        Branch{"file_transfer_start", &WebSocketServer::handleFileTransferStart},
        Branch{"file_transfer", &WebSocketServer::handleFileChunk},
        Branch{"file_chunk", &WebSocketServer::handleFileChunk},
        Branch{"device_info", &WebSocketServer::handleDeviceInfo},
        Branch{"clipboard", &WebSocketServer::handleClipboard},
        Branch{"battery_status", &WebSocketServer::handleBatteryStatus},
        Branch{"remote_control", &WebSocketServer::handleRemoteControl},
    };

    const auto document = link_.reader->parse(data);
    if (!document) {
        platform_.log.line("[WebSocketServer] JSON parsing failed: " + document.error() + ". Payload size: " +
                           QByteArray::number(static_cast<qulonglong>(data.size())) + " bytes");
        return;
    }
    const auto json = document->root().object();
    if (!json) {
        platform_.log.line("[WebSocketServer] Error: Received data is not a valid JSON dictionary.");
        return;
    }
    if (const auto action = json->utf8("action")) {
        const auto* branch = std::ranges::find(branches, *action, &Branch::action);
        if (branch != branches.end()) {
            (this->*branch->run)(*json);
        }
    } else if (json->contains("app")) {
        handleNotification(*json);
    }
}

void WebSocketServer::handleSmsHistory(const JsonObject& json) {
    if (auto messages = decodeSmsHistoryMessage(json)) {
        onMain([&center = platform_.internalNotifications, messages = *std::move(messages)](HistoryStore*) {
            center.post(InternalNotifications::smsHistoryUpdated, messages);
        });
    }
}

void WebSocketServer::handleCallHistory(const JsonObject& json) {
    if (auto calls = decodeCallHistoryMessage(json)) {
        onMain([&center = platform_.internalNotifications, calls = *std::move(calls)](HistoryStore*) {
            center.post(InternalNotifications::callHistoryUpdated, calls);
        });
    }
}

void WebSocketServer::handleSimInfo(const JsonObject& json) {
    if (auto sims = decodeSimInfoMessage(json)) {
        onStore([sims = *std::move(sims)](HistoryStore& store) { store.availableSIMs.set(sims); });
    }
}

void WebSocketServer::handleDeviceInfo(const JsonObject& json) {
    if (auto name = json.string("wifiName")) {
        onStore([name = *std::move(name)](HistoryStore& store) { store.connectedWifiName.set(name); });
    }
    setDeviceName(json);
}

void WebSocketServer::handleClipboard(const JsonObject& json) {
    auto text = json.string("text");
    if (!text) {
        return;
    }
    onMain([&pasteboard = platform_.pasteboard, manager = notificationManager_,
            text = *std::move(text)](HistoryStore* store) {
        copyText(pasteboard, text);
        if (store != nullptr) {
            store->addClipboard(text);
        }
        manager->postSimple(QStringLiteral("Clipboard Synced"),
                            QStringLiteral("Text from Android copied to your Mac clipboard."));
    });
}

void WebSocketServer::handleNotification(const JsonObject& json) {
    auto payload = decodeNotifPayload(json, platform_.clock);
    if (!payload) {
        return;
    }
    onMain([manager = notificationManager_, payload = *std::move(payload)](HistoryStore* store) {
        if (store != nullptr) {
            store->add(payload);
        }
        manager->post(payload);
    });
}

void WebSocketServer::setDeviceName(const JsonObject& json) {
    auto name = json.string("deviceName");
    if (!name || name->isEmpty()) {
        return;
    }
    onStore([name = *std::move(name)](HistoryStore& store) { store.connectedDeviceName.set(name); });
}

} // namespace brenvale
