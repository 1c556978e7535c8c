#pragma once

#include "messages/CallListModel.h"
#include "messages/ContactNames.h"
#include "messages/Conversation.h"
#include "messages/ConversationListModel.h"
#include "messages/Conversations.h"
#include "messages/MessageListModel.h"
#include "notifications/NotificationsTab.h"
#include "platform/InternalNotifications.h"
#include "records/Published.h"
#include "records/SimInfo.h"
#include "remote/RemoteControlTab.h"
#include "shell/ClipboardTab.h"
#include "shell/PhoneStatus.h"
#include "transfer/FileDropTab.h"

#include <QObject>
#include <QVariantList>

#include <optional>
#include <vector>

class QTimer;

namespace brenvale {

class DispatchQueue;
class HistoryStore;
class WebSocketServer;
enum class AuthorizationStatus : qint8;
struct Platform;

/// The state of the main window and what its controls do, for all tabs, without anything to see: the views
/// bind to it. It lives as long as the process, so that a closed window comes back as it was. The SMS and
/// call logs are kept here and nowhere else. On main.
class SettingsView final : public QObject {
    Q_OBJECT

    // The window
    Q_PROPERTY(int selectedTab READ selectedTab WRITE setSelectedTab NOTIFY selectedTabChanged)
    Q_PROPERTY(int detailTab READ detailTab NOTIFY selectedTabChanged)
    Q_PROPERTY(QVariantList sidebarTabs READ sidebarTabs CONSTANT)
    Q_PROPERTY(bool isSidebarShown MEMBER isSidebarShown_ NOTIFY isSidebarShownChanged)

    // Messages
    Q_PROPERTY(QString contactQuery READ contactQuery WRITE setContactQuery NOTIFY contactQueryChanged)
    Q_PROPERTY(bool looksNumeric READ looksNumeric NOTIFY contactQueryChanged)
    Q_PROPERTY(bool showSuggestions READ showSuggestions NOTIFY contactQueryChanged)
    Q_PROPERTY(bool showsNewNumberRow READ showsNewNumberRow NOTIFY contactQueryChanged)
    Q_PROPERTY(bool showsNoMessages READ showsNoMessages NOTIFY showsNoMessagesChanged)
    Q_PROPERTY(brenvale::CountedListModel* filteredConversations READ filteredConversations CONSTANT)
    Q_PROPERTY(bool hasActiveRecipient READ hasActiveRecipient NOTIFY activeRecipientChanged)
    Q_PROPERTY(QString activeRecipient READ activeRecipientText NOTIFY activeRecipientChanged)
    Q_PROPERTY(QString threadName READ threadName NOTIFY threadNameChanged)
    Q_PROPERTY(bool showsThreadAddress READ showsThreadAddress NOTIFY threadNameChanged)
    Q_PROPERTY(brenvale::CountedListModel* activeMessages READ activeMessages CONSTANT)
    Q_PROPERTY(QString chatText READ chatText WRITE setChatText NOTIFY chatTextChanged)

    // SIMs, for messages and calls
    Q_PROPERTY(QStringList simCarriers READ simCarriers NOTIFY simsChanged)
    Q_PROPERTY(int selectedSimIndex READ selectedSimIndex WRITE setSelectedSimIndex NOTIFY simsChanged)
    Q_PROPERTY(bool showsDialerSims READ showsDialerSims NOTIFY simsChanged)
    Q_PROPERTY(int dialerSimIndex READ dialerSimIndex WRITE setDialerSimIndex NOTIFY simsChanged)

    // Calls
    Q_PROPERTY(QString dialpadNumber READ dialpadNumber NOTIFY dialpadNumberChanged)
    Q_PROPERTY(QVariantList dialButtons READ dialButtons CONSTANT)
    Q_PROPERTY(brenvale::CountedListModel* phoneCallLog READ callListModel CONSTANT)

    // The rooms of the other tabs; that with nothing but texts needs none
    Q_PROPERTY(brenvale::FileDropTab* fileDropTab READ fileDropTab CONSTANT)
    Q_PROPERTY(brenvale::NotificationsTab* notificationsTab READ notificationsTab CONSTANT)
    Q_PROPERTY(brenvale::RemoteControlTab* remoteControlTab READ remoteControlTab CONSTANT)
    Q_PROPERTY(brenvale::ClipboardTab* clipboardTab READ clipboardTab CONSTANT)

    // Settings
    Q_PROPERTY(bool isConnected READ isConnected NOTIFY phoneStatusChanged)
    Q_PROPERTY(QString deviceName READ deviceName NOTIFY phoneStatusChanged)
    Q_PROPERTY(QString networkText READ networkText NOTIFY phoneStatusChanged)
    Q_PROPERTY(QString batteryText READ batteryText NOTIFY phoneStatusChanged)
    Q_PROPERTY(bool isBatteryLow READ isBatteryLow NOTIFY phoneStatusChanged)
    Q_PROPERTY(bool isCharging READ isCharging NOTIFY phoneStatusChanged)
    Q_PROPERTY(QString portText READ portText NOTIFY portChanged)
    Q_PROPERTY(bool serverRestartNeeded READ serverRestartNeeded NOTIFY serverRestartNeededChanged)
    Q_PROPERTY(QString localIP READ localIP NOTIFY localIPChanged)
    Q_PROPERTY(int notifAuthStatus READ notifAuthStatus NOTIFY notifAuthStatusChanged)
    Q_PROPERTY(bool launchAtLogin READ launchAtLogin WRITE setLaunchAtLogin NOTIFY launchAtLoginChanged)

public:
    using Conversation = brenvale::Conversation;

    /// All arguments must outlive the view.
    SettingsView(Platform& platform, DispatchQueue& main, WebSocketServer& server, HistoryStore& history);
    ~SettingsView() override;
    SettingsView(const SettingsView&) = delete;
    SettingsView& operator=(const SettingsView&) = delete;

    // shell/SettingsView.cpp

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

    // messages/MessagesTab.cpp

    [[nodiscard]] const QString& contactQuery() const { return contactQuery_; }
    void setContactQuery(const QString& query);
    [[nodiscard]] bool looksNumeric() const { return looksNumeric_; }
    [[nodiscard]] bool showSuggestions() const { return showSuggestions_; }
    [[nodiscard]] bool showsNewNumberRow() const;
    [[nodiscard]] bool showsNoMessages() const;
    [[nodiscard]] ConversationListModel* filteredConversations() { return &filteredConversations_; }

    [[nodiscard]] const std::optional<QString>& activeRecipient() const { return activeRecipient_; }
    [[nodiscard]] bool hasActiveRecipient() const { return activeRecipient_.has_value(); }
    [[nodiscard]] QString activeRecipientText() const { return activeRecipient_.value_or(QString()); }

    /// Whose thread is open, as the head of the thread shows it, and whether the address stands below.
    [[nodiscard]] QString threadName() const;
    [[nodiscard]] bool showsThreadAddress() const;
    [[nodiscard]] MessageListModel* activeMessages() { return &activeMessages_; }
    [[nodiscard]] const QString& chatText() const { return chatText_; }
    void setChatText(const QString& text);

    [[nodiscard]] const QList<SmsRecord>& phoneSmsLog() const { return conversations_.log(); }

    /// The SMS tab comes on screen.
    Q_INVOKABLE void messagesTabAppeared();
    Q_INVOKABLE void requestSmsHistory();

    /// Opens the thread of `address`, which may have no message yet.
    Q_INVOKABLE void openConversation(const QString& address);

    /// Opens a thread with the number in the search field, as typed, and empties the field.
    Q_INVOKABLE void openNewNumber();

    /// Sends the draft to the open thread and shows it there at once. Does nothing without either.
    Q_INVOKABLE void sendChatMessage();

    /// Puts the text of a message on the clipboard.
    Q_INVOKABLE void copyMessage(const QString& body);

    // messages/Sims.cpp

    [[nodiscard]] QStringList simCarriers() const;

    /// The slot that messages and calls go out from, whether the phone still has it or not.
    [[nodiscard]] qint64 selectedSimSlot() const { return selectedSimSlot_; }
    void setSelectedSimSlot(qint64 slot);

    /// The place of that slot in `simCarriers`; -1 where it is not there.
    [[nodiscard]] int selectedSimIndex() const;
    void setSelectedSimIndex(int index);

    /// The dial pad offers slots 0 and 1 by number, where the phone has several SIMs; -1 is any other.
    [[nodiscard]] bool showsDialerSims() const;
    [[nodiscard]] int dialerSimIndex() const;
    void setDialerSimIndex(int index);

    // messages/CallsTab.cpp

    [[nodiscard]] const QString& dialpadNumber() const { return dialpadNumber_; }

    /// Maps with "main" and "letters", row by row.
    [[nodiscard]] static QVariantList dialButtons();
    [[nodiscard]] CallListModel* callListModel() { return &calls_; }
    [[nodiscard]] const QList<CallRecord>& phoneCallLog() const { return calls_.records(); }

    Q_INVOKABLE void appendToDialpadNumber(const QString& text);
    Q_INVOKABLE void removeLastFromDialpadNumber();

    /// What the pad does with a key of the keyboard, a `Qt::Key` and the text that it types; false where it
    /// is not the pad's.
    Q_INVOKABLE bool dialpadKeyPressed(int key, const QString& characters);

    /// Has the phone call the number on the display and announces the call. Does nothing on an empty display.
    Q_INVOKABLE void startCall();

    /// Puts `number` on the display and calls it.
    Q_INVOKABLE void redial(const QString& number);
    void endCall();

    /// "MM:SS", with as many minutes as it takes. Pure.
    [[nodiscard]] static QString formatDuration(qint64 seconds);

    [[nodiscard]] QString contactName(const QString& address,
                                      const std::optional<QString>& providedName = {}) const {
        return names_.contactName(address, providedName);
    }

    [[nodiscard]] FileDropTab* fileDropTab() { return &fileDropTab_; }
    [[nodiscard]] NotificationsTab* notificationsTab() { return &notificationsTab_; }
    [[nodiscard]] RemoteControlTab* remoteControlTab() { return &remoteControlTab_; }
    [[nodiscard]] ClipboardTab* clipboardTab() { return &clipboardTab_; }

    // shell/SettingsTab.cpp

    [[nodiscard]] bool isConnected() const { return phone_.isConnected(); }
    [[nodiscard]] QString deviceName() const { return phone_.deviceName.value_or(QString()); }
    [[nodiscard]] QString networkText() const { return phone_.networkText(); }
    [[nodiscard]] QString batteryText() const { return phone_.batteryText(); }
    [[nodiscard]] bool isBatteryLow() const { return phone_.isBatteryLow(); }
    [[nodiscard]] bool isCharging() const { return phone_.isCharging; }
    [[nodiscard]] QString portText() const;
    [[nodiscard]] bool serverRestartNeeded() const { return serverRestartNeeded_; }

    /// Stores what the field holds, if that is an integer; otherwise the field is to show `portText` again.
    Q_INVOKABLE bool commitPort(const QString& text);
    Q_INVOKABLE void restartServer();

    Q_INVOKABLE void copyLocalIP();

    /// The settings tab comes on screen.
    Q_INVOKABLE void settingsTabAppeared();

    // shell/SystemStatus.cpp

    /// The address by which the phone reaches this computer; each call reads the adapters anew.
    [[nodiscard]] static QString localIP();

    /// A value of `AuthorizationStatus`, as it was when it was last asked for.
    [[nodiscard]] int notifAuthStatus() const;
    void refreshNotifStatus();
    Q_INVOKABLE void requestNotificationPermission();
    Q_INVOKABLE void openNotificationSettings();

    /// What the user chose, even where the desktop did not take it.
    [[nodiscard]] bool launchAtLogin() const { return launchAtLogin_; }
    void setLaunchAtLogin(bool isWanted);

    // No control shows or changes these.
    QStringList selectedRecipients;
    QString smsBody;
    QString smsStatus;
    QString smsStatusColor = QStringLiteral("secondary");
    bool isSpeakerOn = false;
    bool isMuted = false;
    QTimer* timer = nullptr;

signals:
    void selectedTabChanged();
    void isSidebarShownChanged();
    void contactQueryChanged();
    void showsNoMessagesChanged();
    void activeRecipientChanged();
    void threadNameChanged();
    void chatTextChanged();
    void simsChanged();
    void dialpadNumberChanged();
    void phoneStatusChanged();
    void portChanged();
    void serverRestartNeededChanged();
    void localIPChanged();
    void notifAuthStatusChanged();
    void launchAtLoginChanged();

private:
    // shell/SettingsView.cpp
    void observe();
    [[nodiscard]] int storedTab() const;
    void refreshDates();

    /// Keeps `copy` equal to `source` and emits `changed` when that changes it.
    template <typename Value>
    void follow(Published<Value>& source, Value& copy, void (SettingsView::*changed)());

    // messages/MessagesTab.cpp
    void setPhoneSmsLog(const QList<SmsRecord>& log);
    void logChanged();
    void filterConversations();

    // messages/CallsTab.cpp
    void setPhoneCallLog(const QList<CallRecord>& log);
    void setDialpadNumber(const QString& number);

    // messages/Sims.cpp
    void simsReported(const QList<SimInfo>& sims);

    // shell/SettingsTab.cpp
    [[nodiscard]] qint64 storedPort() const;
    void storedPortChanged();

    // shell/SystemStatus.cpp
    void setNotifAuthStatus(AuthorizationStatus status);

    Platform& platform_;
    DispatchQueue& main_;
    WebSocketServer& server_;
    HistoryStore& history_;

    // The window
    int selectedTab_;
    bool isSidebarShown_ = true;

    // Messages
    ContactNames names_;
    Conversations conversations_;
    ConversationListModel filteredConversations_;
    MessageListModel activeMessages_;
    QString contactQuery_;
    bool looksNumeric_ = false;
    bool showSuggestions_ = false;
    std::optional<QString> activeRecipient_;
    QString chatText_;
    QList<SimInfo> sims_;
    qint64 selectedSimSlot_ = 0;

    // Calls
    CallListModel calls_;
    QString dialpadNumber_;

    FileDropTab fileDropTab_;
    NotificationsTab notificationsTab_;
    RemoteControlTab remoteControlTab_;
    ClipboardTab clipboardTab_;

    // Settings
    PhoneStatus phone_;
    qint64 port_; ///< as stored
    bool serverRestartNeeded_ = false;
    AuthorizationStatus notifAuthStatus_{}; ///< not determined
    bool launchAtLogin_;

    std::vector<Subscription> subscriptions_; ///< last: no observer is called while the rest goes
};

} // namespace brenvale
