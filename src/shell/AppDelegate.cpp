#include "shell/AppDelegate.h"

#include "link/WebSocketServer.h"
#include "notifications/NotificationReplies.h"
#include "platform/AccessibilityTrust.h"
#include "platform/AddressWatch.h"
#include "platform/DispatchQueue.h"
#include "platform/Platform.h"
#include "platform/StatusItem.h"
#include "platform/SystemSleep.h"
#include "platform/UserDefaults.h"
#include "records/HistoryStore.h"
#include "shell/MainWindow.h"
#include "shell/SettingsView.h"
#include "shell/Tab.h"
#include "transfer/SendToAndroidService.h"

namespace brenvale {

namespace {

constexpr QStringView selectedTabKey = u"selectedSettingsTab";

} // namespace

AppDelegate::AppDelegate(Platform& platform, DispatchQueue& main, WebSocketServer& server,
                         MakeMainWindow makeMainWindow, CallWindows::MakePanels makeCallPanels)
    : platform_(platform),
      main_(main),
      server_(server),
      makeMainWindow_(std::move(makeMainWindow)),
      notificationPermission_(platform, main),
      historyStore_(std::make_shared<HistoryStore>()),
      callWindows_(
          std::make_shared<CallWindows>(platform, main, server, *historyStore_, std::move(makeCallPanels))) {
    notificationPermission_.deniedAlertWillShow = [this] {
        setActivationPolicy(ActivationPolicy::regular);
    };
    notificationPermission_.deniedAlertIsGone = [this] {
        if (!isSettingsWindowVisible()) {
            setActivationPolicy(ActivationPolicy::accessory);
        }
    };
}

AppDelegate::~AppDelegate() = default;

void AppDelegate::applicationDidFinishLaunching() {
    platform_.userNotificationCenter.setDelegate(this);
    notificationPermission_.requestNotificationPermission();
    registerNotificationCategories(platform_.userNotificationCenter);
    checkAccessibilityPermission();
    buildMenu(); // before the server starts, or its first report is lost
    server_.historyStore = historyStore_;
    server_.start();
    callWindows_->setupIncomingCallObservation();
    callWindows_->setupActiveCallObservation();
    callWindows_->setupCallEndObservation();
    setActivationPolicy(ActivationPolicy::accessory);
    platform_.systemSleep.didWake = [&server = server_] {
        server.checkConnections();
    };
}

bool AppDelegate::applicationShouldHandleReopen() {
    if (!isSettingsWindowVisible()) {
        showSettings(static_cast<int>(platform_.userDefaults.integer(selectedTabKey)));
    }
    return true;
}

void AppDelegate::openWindowWithoutTray() {
    platform_.statusItem.trayMissing = [this] {
        if (!settingsWindow_) {
            applicationShouldHandleReopen();
        }
    };
}

void AppDelegate::handleSendToAndroidService(const QList<QUrl>& urls) {
    if (sendToAndroid(urls, server_, platform_.log)) {
        main_.async([this] { showSettings(Tab::fileDrop); });
    }
}

void AppDelegate::userNotificationCenterDidReceive(const NotificationResponse& response) {
    sendReply(response, server_);
}

PresentationOptions
AppDelegate::userNotificationCenterWillPresent(const NotificationRequest& /*request*/) const {
    return {.banner = true, .sound = true, .badge = true};
}

void AppDelegate::checkAccessibilityPermission() {
    (void)platform_.accessibilityTrust.isProcessTrusted(true); // only for the question that it asks
}

void AppDelegate::showSettings(int tab) {
    platform_.userDefaults.setInteger(selectedTabKey, tab);
    setActivationPolicy(ActivationPolicy::regular);
    if (!settingsWindow_) {
        buildSettingsWindow();
    }
    addressChanges_ =
        platform_.addressWatch.observe([&tab = *settingsView_->settingsTab()] { tab.refreshLocalIP(); });
    settingsWindow_->makeKeyAndOrderFront();
}

void AppDelegate::buildSettingsWindow() {
    settingsView_ = std::make_unique<SettingsView>(platform_, main_, server_, *historyStore_);
    settingsWindow_ = makeMainWindow_(*settingsView_);
    settingsWindow_->windowWillClose = [this] {
        windowWillClose();
    };
}

void AppDelegate::windowWillClose() {
    addressChanges_.reset();
    setActivationPolicy(ActivationPolicy::accessory);
}

bool AppDelegate::isSettingsWindowVisible() const {
    return settingsWindow_ && settingsWindow_->isVisible();
}

} // namespace brenvale
