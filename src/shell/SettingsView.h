#pragma once

#include "messages/CallsTab.h"
#include "messages/ContactNames.h"
#include "messages/SendSmsTab.h"
#include "notifications/NotificationsTab.h"
#include "remote/RemoteControlTab.h"
#include "shell/ClipboardTab.h"
#include "shell/SettingsTab.h"
#include "transfer/FileDropTab.h"

namespace brenvale {

/// The main window without anything to see: which tab is selected, the state of each, and what several of
/// them share. It lives as long as the process, so that a closed window comes back as it was. It passes on
/// what happens to the window as a whole; the rest is between a tab's state and its view. On main.
class SettingsView final : public QObject {
    Q_OBJECT
    Q_PROPERTY(int selectedTab READ selectedTab WRITE setSelectedTab NOTIFY selectedTabChanged)
    Q_PROPERTY(int detailTab READ detailTab NOTIFY selectedTabChanged)
    Q_PROPERTY(QVariantList sidebarTabs READ sidebarTabs CONSTANT)
    Q_PROPERTY(bool isSidebarShown MEMBER isSidebarShown_ NOTIFY isSidebarShownChanged)
    Q_PROPERTY(brenvale::CallsTab* callsTab READ callsTab CONSTANT)
    Q_PROPERTY(brenvale::SendSmsTab* sendSmsTab READ sendSmsTab CONSTANT)
    Q_PROPERTY(brenvale::FileDropTab* fileDropTab READ fileDropTab CONSTANT)
    Q_PROPERTY(brenvale::NotificationsTab* notificationsTab READ notificationsTab CONSTANT)
    Q_PROPERTY(brenvale::RemoteControlTab* remoteControlTab READ remoteControlTab CONSTANT)
    Q_PROPERTY(brenvale::ClipboardTab* clipboardTab READ clipboardTab CONSTANT)
    Q_PROPERTY(brenvale::SettingsTab* settingsTab READ settingsTab CONSTANT)

public:
    using Conversation = brenvale::Conversation;

    /// All arguments must outlive the view.
    SettingsView(Platform& platform, DispatchQueue& main, WebSocketServer& server, HistoryStore& history);
    ~SettingsView() override;
    SettingsView(const SettingsView&) = delete;
    SettingsView& operator=(const SettingsView&) = delete;

    [[nodiscard]] int selectedTab() const { return selectedTab_; }
    void setSelectedTab(int tab);

    /// The tab to show: `selectedTab`, or the calls where that names none.
    [[nodiscard]] int detailTab() const;

    /// Maps with "tab", "label" and "icon", from top to bottom.
    [[nodiscard]] static QVariantList sidebarTabs();

    /// Whether a window of `width` has room for the labels of the sidebar. Pure.
    [[nodiscard]] Q_INVOKABLE static bool showLabels(double width);

    /// The window comes on screen.
    Q_INVOKABLE void appeared();

    /// The user comes back to the program.
    Q_INVOKABLE void becameActive();

    // The eighth, the one that tells of the program, has nothing but its texts.
    [[nodiscard]] CallsTab* callsTab() { return &callsTab_; }
    [[nodiscard]] SendSmsTab* sendSmsTab() { return &sendSmsTab_; }
    [[nodiscard]] FileDropTab* fileDropTab() { return &fileDropTab_; }
    [[nodiscard]] NotificationsTab* notificationsTab() { return &notificationsTab_; }
    [[nodiscard]] RemoteControlTab* remoteControlTab() { return &remoteControlTab_; }
    [[nodiscard]] ClipboardTab* clipboardTab() { return &clipboardTab_; }
    [[nodiscard]] SettingsTab* settingsTab() { return &settingsTab_; }

signals:
    void selectedTabChanged();
    void isSidebarShownChanged();

private:
    void observe();
    void setPhoneCallLog(const QList<CallRecord>& log);
    void refreshDates();
    [[nodiscard]] int storedTab() const;

    Platform& platform_;
    WebSocketServer& server_;
    int selectedTab_;
    bool isSidebarShown_ = true;
    ContactNames names_;
    Sims sims_;
    CallsTab callsTab_;
    SendSmsTab sendSmsTab_;
    FileDropTab fileDropTab_;
    NotificationsTab notificationsTab_;
    RemoteControlTab remoteControlTab_;
    ClipboardTab clipboardTab_;
    SettingsTab settingsTab_;
    std::vector<Subscription> subscriptions_; ///< last: no observer is called while the rest goes
};

} // namespace brenvale
