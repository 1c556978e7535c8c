#include "shell/AppDelegate.h"

#include "link/WebSocketServer.h"
#include "platform/AccessibilityTrust.h"
#include "platform/Platform.h"
#include "records/HistoryStore.h"

namespace brenvale {

AppDelegate::AppDelegate(Platform& platform, DispatchQueue& main, WebSocketServer& server)
    : platform_(platform), main_(main), server_(server), historyStore_(std::make_shared<HistoryStore>()) {}

AppDelegate::~AppDelegate() = default;

void AppDelegate::applicationDidFinishLaunching() {
    platform_.userNotificationCenter.setDelegate(this);
    requestNotificationPermission();
    registerNotificationCategories();
    checkAccessibilityPermission();
    server_.historyStore = historyStore_;
    server_.start();
    setActivationPolicy(ActivationPolicy::accessory);
}

void AppDelegate::checkAccessibilityPermission() {
    (void)platform_.accessibilityTrust.isProcessTrusted(true); // only for the question that it asks
}

} // namespace brenvale
