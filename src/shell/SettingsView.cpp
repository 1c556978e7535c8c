#include "shell/SettingsView.h"

#include "link/WebSocketServer.h"
#include "platform/Platform.h"
#include "platform/UserDefaults.h"
#include "records/HistoryStore.h"
#include "shell/LaunchAtLoginManager.h"
#include "shell/Tab.h"

#include <utility>

namespace brenvale {

namespace {

constexpr QStringView selectedTabKey = u"selectedSettingsTab";

QVariantMap sidebarTab(Tab::Number tab, const QString& label, const QString& icon) {
    return {{QStringLiteral("tab"), static_cast<int>(tab)},
            {QStringLiteral("label"), label},
            {QStringLiteral("icon"), icon}};
}

} // namespace

SettingsView::SettingsView(Platform& platform, DispatchQueue& main, WebSocketServer& server,
                           HistoryStore& history)
    : platform_(platform),
      main_(main),
      server_(server),
      history_(history),
      selectedTab_(storedTab()),
      filteredConversations_(names_, platform.clock),
      sims_(history.availableSIMs.get()),
      calls_(names_, platform.clock),
      fileDropTab_(history, server, platform.fileViewer),
      notificationsTab_(history, server, names_),
      remoteControlTab_(platform, server),
      clipboardTab_(history, server, platform.pasteboard),
      port_(storedPort()),
      launchAtLogin_(LaunchAtLoginManager::isEnabled(platform)) {
    observe();
}

SettingsView::~SettingsView() = default;

template <typename Value>
void SettingsView::follow(Published<Value>& source, Value& copy, void (SettingsView::*changed)()) {
    subscriptions_.push_back(source.subscribe([this, &copy, changed](const Value& value) {
        if (copy != value) {
            copy = value;
            emit(this->*changed)();
        }
    }));
}

void SettingsView::observe() {
    auto& notifications = platform_.internalNotifications;
    subscriptions_ = {
        notifications.addObserver(InternalNotifications::smsHistoryUpdated,
                                  [this](const auto& object) {
                                      if (const auto* log = std::get_if<QList<SmsRecord>>(&object)) {
                                          setPhoneSmsLog(*log);
                                      }
                                  }),
        notifications.addObserver(InternalNotifications::callHistoryUpdated,
                                  [this](const auto& object) {
                                      if (const auto* log = std::get_if<QList<CallRecord>>(&object)) {
                                          setPhoneCallLog(*log);
                                      }
                                  }),
        notifications.addObserver(InternalNotifications::prepareActiveCall,
                                  [this](const auto& object) {
                                      if (const auto* number = std::get_if<QString>(&object)) {
                                          setDialpadNumber(*number);
                                      }
                                  }),
        platform_.userDefaults.observe([this] {
            if (const int tab = storedTab(); tab != selectedTab_) {
                selectedTab_ = tab;
                emit selectedTabChanged();
            }
            storedPortChanged();
        }),
        history_.availableSIMs.subscribe([this](const auto& sims) { simsReported(sims); })};
    follow(history_.connectedRemoteIP, phone_.remoteIP, &SettingsView::phoneStatusChanged);
    follow(history_.connectedWifiName, phone_.wifiName, &SettingsView::phoneStatusChanged);
    follow(history_.connectedDeviceName, phone_.deviceName, &SettingsView::phoneStatusChanged);
    follow(history_.batteryLevel, phone_.batteryLevel, &SettingsView::phoneStatusChanged);
    follow(history_.isCharging, phone_.isCharging, &SettingsView::phoneStatusChanged);
}

int SettingsView::storedTab() const {
    const auto tab = platform_.userDefaults.integer(selectedTabKey);
    return std::in_range<int>(tab) ? static_cast<int>(tab) : -1; // one as unknown as the other
}

void SettingsView::setSelectedTab(int tab) {
    platform_.userDefaults.setInteger(selectedTabKey, tab); // which is observed
}

int SettingsView::detailTab() const {
    return selectedTab_ >= Tab::settings && selectedTab_ <= Tab::remote ? selectedTab_ : Tab::call;
}

QVariantList SettingsView::sidebarTabs() {
    return {sidebarTab(Tab::call, QStringLiteral("Call"), QStringLiteral("call-start")),
            sidebarTab(Tab::sms, QStringLiteral("SMS"), QStringLiteral("document-send")),
            sidebarTab(Tab::fileDrop, QStringLiteral("File Drop"), QStringLiteral("folder-download")),
            sidebarTab(Tab::notifications, QStringLiteral("Notifications"), QStringLiteral("clock")),
            sidebarTab(Tab::remote, QStringLiteral("Remote"), QStringLiteral("input-keyboard")),
            sidebarTab(Tab::clipboard, QStringLiteral("Clipboard"), QStringLiteral("edit-paste")),
            sidebarTab(Tab::settings, QStringLiteral("Settings"), QStringLiteral("settings-configure")),
            sidebarTab(Tab::info, QStringLiteral("Info"), QStringLiteral("help-about"))};
}

bool SettingsView::showLabels(double width) {
    return width > 250;
}

void SettingsView::appeared() {
    server_.requestSmsHistory();
    server_.requestCallHistory();
    remoteControlTab_.refreshAccessibility();
    refreshNotifStatus();
    refreshDates();
}

void SettingsView::becameActive() {
    remoteControlTab_.refreshAccessibility();
    emit localIPChanged(); // the network may be another by now
    refreshDates();
}

void SettingsView::refreshDates() {
    // What was today when it was shown may be yesterday by now.
    filteredConversations_.refresh();
    calls_.refresh();
    notificationsTab_.refresh();
}

} // namespace brenvale
