#include "link/Json.h"
#include "link/WebSocketServer.h"
#include "notifications/BatteryStage.h"
#include "notifications/NotificationManager.h"
#include "records/HistoryStore.h"

namespace brenvale {

void WebSocketServer::handleBatteryStatus(const JsonObject& json) {
    const auto level = json.integer("level");
    const bool isCharging = json.boolean("isCharging").value_or(false);
    onMain([weak = weak_from_this(), level, isCharging](HistoryStore* store) {
        if (const auto self = weak.lock()) {
            self->batteryReported(level, isCharging, store);
        }
    });
}

void WebSocketServer::batteryReported(std::optional<qint64> level, bool isCharging, HistoryStore* store) {
    const bool wasCharging = store != nullptr && store->isCharging.get();
    if (store != nullptr) {
        store->batteryLevel.set(level);
        store->isCharging.set(isCharging);
    }
    if (isCharging && !wasCharging) {
        battery_.lastBatteryAlertThreshold.reset(); // plugging in is all that arms the stages again
    }
    if (isCharging || !level) {
        return;
    }
    const auto stage = nextBatteryStage(*level, battery_.lastBatteryAlertThreshold);
    if (!stage) {
        return;
    }
    const auto known = store != nullptr ? store->connectedDeviceName.get() : std::nullopt;
    const auto name = known.value_or(QStringLiteral("Your Android"));
    notificationManager_->postSimple(batteryAlertTitle(*stage, name, *level), batteryAlertBody(*stage));
    battery_.lastBatteryAlertThreshold = stage;
}

} // namespace brenvale
