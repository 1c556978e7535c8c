#include "shell/SettingsView.h"

#include "link/WebSocketServer.h"
#include "platform/InternalNotifications.h"
#include "platform/Platform.h"
#include "platform/UserDefaults.h"
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
      server_(server),
      selectedTab_(storedTab()),
      sims_(history),
      callsTab_(platform, server, history, names_, sims_),
      sendSmsTab_(platform, server, names_, sims_),
      fileDropTab_(history, server, platform.fileViewer),
      notificationsTab_(history, server, names_),
      remoteControlTab_(platform, server),
      clipboardTab_(history, server, platform.pasteboard),
      settingsTab_(platform, main, server, history) {
    observe();
}

SettingsView::~SettingsView() = default;

void SettingsView::observe() {
    auto& notifications = platform_.internalNotifications;
    subscriptions_ = {
        notifications.addObserver(InternalNotifications::smsHistoryUpdated,
                                  [this](const auto& object) {
                                      if (const auto* log = std::get_if<QList<SmsRecord>>(&object)) {
                                          sendSmsTab_.setPhoneSmsLog(*log);
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
                                          callsTab_.setDialpadNumber(*number);
                                      }
                                  }),
        platform_.userDefaults.observe([this] {
            if (const int tab = storedTab(); tab != selectedTab_) {
                selectedTab_ = tab;
                emit selectedTabChanged();
            }
        })};
}

void SettingsView::setPhoneCallLog(const QList<CallRecord>& log) {
    names_.setCallLog(log); // first: the tabs show names by it
    callsTab_.setPhoneCallLog(log);
    notificationsTab_.refresh();
    sendSmsTab_.namesChanged();
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
    settingsTab_.refreshNotifStatus();
    refreshDates();
}

void SettingsView::becameActive() {
    remoteControlTab_.refreshAccessibility();
    settingsTab_.refreshLocalIP();
    refreshDates();
}

void SettingsView::refreshDates() {
    sendSmsTab_.refreshDates();
    callsTab_.refreshDates();
    notificationsTab_.refresh();
}

} // namespace brenvale
