#pragma once

#include "fakes/FakeScriptRunner.h"
#include "fakes/RecordingEventPoster.h"
#include "platform/AccessibilityTrust.h"
#include "platform/AddressWatch.h"
#include "platform/Alerts.h"
#include "platform/Clock.h"
#include "platform/ComputerName.h"
#include "platform/Downloads.h"
#include "platform/FileViewer.h"
#include "platform/InternalNotifications.h"
#include "platform/Log.h"
#include "platform/LoginItem.h"
#include "platform/Pasteboard.h"
#include "platform/Platform.h"
#include "platform/StatusItem.h"
#include "platform/SystemSettings.h"
#include "platform/SystemSleep.h"
#include "platform/UserDefaults.h"
#include "platform/UserNotificationCenter.h"

#include <QByteArrayList>
#include <QHash>
#include <QTemporaryDir>
#include <QUrl>

#include <atomic>
#include <mutex>
#include <variant>
#include <vector>

namespace brenvale {

class FakeAccessibilityTrust final : public AccessibilityTrust {
public:
    [[nodiscard]] State state() const override;
    [[nodiscard]] bool isProcessTrusted(bool prompt) override;
    void askUser() override { ++wishes; }
    [[nodiscard]] Subscription observe(std::function<void()> observer) override;

    /// The consent comes or goes.
    void change(bool trusted);

    std::function<void()> asked; ///< looks at what the world was like then

    std::atomic<bool> isTrusted = false;
    bool isAskable = false;
    int prompts = 0;
    int wishes = 0; ///< how often the user's own wish was passed on

private:
    Published<std::monostate> change_;
};

/// A network that changes when the test says so.
class FakeAddressWatch final : public AddressWatch {
public:
    [[nodiscard]] Subscription observe(std::function<void()> observer) override;

    /// False where nobody observes it.
    [[nodiscard]] bool change() const;

private:
    std::weak_ptr<const std::function<void()>> observer_;
};

/// Keeps the alert on show until the test answers it.
class FakeAlerts final : public Alerts {
public:
    void runModal(const Alert& alert, Answer answer) override;
    void respond(int response);

    std::vector<Alert> shown;

private:
    Answer answer_;
};

class FakeClock final : public Clock {
public:
    [[nodiscard]] double now() const override { return time; }
    [[nodiscard]] double uptime() const override { return time + setBack; }

    double time = 1'700'000'000;
    double setBack = 0; ///< by how much the wall clock has been set back
};

class FakeComputerName final : public ComputerName {
public:
    [[nodiscard]] QString localizedName() const override { return name; }

    QString name = QStringLiteral("Desk");
};

/// A folder of its own on the real disk.
class TemporaryDownloads final : public Downloads {
public:
    [[nodiscard]] QString folder() const override { return path; }

private:
    QTemporaryDir folder_;

public:
    QString path = folder_.path();
};

/// Collects lines, from any thread.
class RecordingLog final : public Log {
public:
    void line(QByteArrayView text) override;
    [[nodiscard]] QByteArrayList lines() const;

    /// How many lines hold `part`.
    [[nodiscard]] qsizetype count(const QByteArray& part) const;

private:
    mutable std::mutex mutex_;
    QByteArrayList lines_;
};

class FakeLoginItem final : public LoginItem {
public:
    [[nodiscard]] bool isEnabled() const override { return enabled; }
    [[nodiscard]] std::expected<void, QString> registerItem() override { return set(true); }
    [[nodiscard]] std::expected<void, QString> unregisterItem() override { return set(false); }

    bool enabled = false;
    QString error; ///< when set, no change succeeds

private:
    std::expected<void, QString> set(bool value);
};

class FakeStatusItem final : public StatusItem {
public:
    void setMenu(std::vector<MenuItem> next) override;
    void setTitle(int tag, const QString& title) override;

    /// Chooses the row of that title, as the user does.
    void choose(const QString& title) const;

    std::vector<MenuItem> rows;
    std::function<void()> menuSet; ///< looks at what the world was like then
};

/// Wakes up when the test calls `didWake`.
class FakeSystemSleep final : public SystemSleep {};

class FakeSystemSettings final : public SystemSettings {
public:
    void open(Pane pane) override { opened.push_back(pane); }

    std::vector<Pane> opened;
};

/// Records the calls as texts.
class FakePasteboard final : public Pasteboard {
public:
    void clearContents() override;
    void setString(const QString& text) override;
    void string(TextAnswer answer) override;

    /// The other program gives its text at last.
    void answerAll();

    QStringList calls;
    std::optional<QString> contents; ///< what another program put there
    bool isSlow = false;             ///< whether that program takes its time to give it

private:
    std::vector<TextAnswer> waiting_;
};

class FakeUserDefaults final : public UserDefaults {
public:
    [[nodiscard]] qint64 integer(QStringView key) const override;
    [[nodiscard]] bool contains(QStringView key) const override;
    [[nodiscard]] std::expected<SettingsSections, QString> sections() const override;
    void setInteger(QStringView key, qint64 value) override { set(key.toString(), value); }
    [[nodiscard]] Subscription observe(std::function<void()> observer) override;

    /// As another process would, too.
    void set(const QString& key, qint64 value);
    void setSection(const QString& name, const QMultiMap<QString, QString>& values);

    /// From now on no section can be read.
    void failSections(const QString& error);

private:
    mutable std::mutex mutex_;
    QHash<QString, qint64> integers_;
    SettingsSections sections_;
    QString sectionError_;
    Published<std::monostate> change_;
};

class FakeFileViewer final : public FileViewer {
public:
    void activateFileViewerSelecting(const QUrl& file) override { shown.append(file); }

    QList<QUrl> shown;
};

/// A centre that takes every request, and keeps the notifications on show with replacement by identifier.
class FakeNotificationCenter final : public UserNotificationCenter {
public:
    void setDelegate(UserNotificationCenterDelegate* next) override;
    void setNotificationCategories(QList<NotificationCategory> next) override;
    void getNotificationSettings(SettingsAnswer answer) override;
    void requestAuthorization(AuthorizationAnswer answer) override;
    void add(NotificationRequest request, Completion completion) override;
    void removeDelivered(const QList<RequestIdentifier>& identifiers) override;
    void removePending(const QList<RequestIdentifier>& identifiers) override;
    [[nodiscard]] QStringList titles() const;

    std::vector<NotificationRequest> added; ///< every request ever
    std::vector<NotificationRequest> shown; ///< those on show
    QStringList calls;
    std::optional<QString> error; ///< when set, requests fail with it

    UserNotificationCenterDelegate* delegate = nullptr;
    QList<NotificationCategory> categories;
    AuthorizationStatus status = AuthorizationStatus::authorized;
    bool isGranted = false; ///< what asking for the permission ends in
    std::optional<QString> authorizationError;

private:
    void removeShown(const RequestIdentifier& identifier);
};

/// The in-memory desktop.
struct FakePlatform {
    FakePlatform();
    ~FakePlatform();
    FakePlatform(const FakePlatform&) = delete;
    FakePlatform& operator=(const FakePlatform&) = delete;

    FakeAccessibilityTrust accessibilityTrust;
    FakeAddressWatch addressWatch;
    FakeAlerts alerts;
    FakeClock clock;
    FakeComputerName computerName;
    TemporaryDownloads downloads;
    RecordingEventPoster eventPoster;
    FakeFileViewer fileViewer;
    InternalNotifications internalNotifications;
    RecordingLog log;
    FakeLoginItem loginItem;
    FakePasteboard pasteboard;
    FakeScriptRunner scriptRunner;
    FakeStatusItem statusItem;
    FakeSystemSettings systemSettings;
    FakeSystemSleep systemSleep;
    FakeUserDefaults userDefaults;
    FakeNotificationCenter userNotificationCenter;
    Platform platform{.accessibilityTrust = accessibilityTrust,
                      .addressWatch = addressWatch,
                      .alerts = alerts,
                      .clock = clock,
                      .computerName = computerName,
                      .downloads = downloads,
                      .eventPoster = eventPoster,
                      .fileViewer = fileViewer,
                      .internalNotifications = internalNotifications,
                      .log = log,
                      .loginItem = loginItem,
                      .pasteboard = pasteboard,
                      .scriptRunner = scriptRunner,
                      .statusItem = statusItem,
                      .systemSettings = systemSettings,
                      .systemSleep = systemSleep,
                      .userDefaults = userDefaults,
                      .userNotificationCenter = userNotificationCenter};
};

} // namespace brenvale
