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

#include <algorithm>
#include <atomic>
#include <mutex>
#include <variant>
#include <vector>

namespace brenvale {

class FakeAccessibilityTrust final : public AccessibilityTrust {
public:
    [[nodiscard]] State state() const override {
        if (isTrusted) {
            return State::trusted;
        }
        return isAskable ? State::toBeAsked : State::impossible;
    }

    [[nodiscard]] bool isProcessTrusted(bool prompt) override {
        prompts += prompt ? 1 : 0;
        if (asked) {
            asked();
        }
        return isTrusted;
    }

    void askUser() override { ++wishes; }

    [[nodiscard]] Subscription observe(std::function<void()> observer) override {
        return change_.subscribe([observer = std::move(observer)](const auto&) { observer(); });
    }

    /// The consent comes or goes.
    void change(bool trusted) {
        isTrusted = trusted;
        change_.set({});
    }

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
    [[nodiscard]] Subscription observe(std::function<void()> observer) override {
        auto shared = std::make_shared<const std::function<void()>>(std::move(observer));
        observer_ = shared;
        return shared;
    }

    /// False where nobody observes it.
    [[nodiscard]] bool change() const {
        const auto observer = observer_.lock();
        if (observer) {
            (*observer)();
        }
        return observer != nullptr;
    }

private:
    std::weak_ptr<const std::function<void()>> observer_;
};

/// Keeps the alert on show until the test answers it.
class FakeAlerts final : public Alerts {
public:
    void runModal(const Alert& alert, Answer answer) override {
        shown.push_back(alert);
        answer_ = std::move(answer);
    }

    void respond(int response) { std::exchange(answer_, {})(response); }

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
    void line(QByteArrayView text) override {
        const std::scoped_lock lock(mutex_);
        lines_.append(text.toByteArray());
    }

    [[nodiscard]] QByteArrayList lines() const {
        const std::scoped_lock lock(mutex_);
        return {lines_.begin(), lines_.end()}; // a list of its own: the original may grow in another thread
    }

    /// How many lines hold `part`.
    [[nodiscard]] qsizetype count(const QByteArray& part) const {
        const std::scoped_lock lock(mutex_);
        return std::ranges::count_if(lines_, [&part](const QByteArray& line) { return line.contains(part); });
    }

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
    std::expected<void, QString> set(bool value) {
        if (!error.isEmpty()) {
            return std::unexpected(error);
        }
        enabled = value;
        return {};
    }
};

class FakeStatusItem final : public StatusItem {
public:
    void setMenu(std::vector<MenuItem> next) override {
        rows = std::move(next);
        if (menuSet) {
            menuSet();
        }
    }
    void setTitle(int tag, const QString& title) override {
        const auto row = std::ranges::find(rows, tag, &MenuItem::tag);
        if (row != rows.end()) {
            row->title = title;
        }
    }

    /// Chooses the row of that title, as the user does.
    void choose(const QString& title) const {
        const auto row = std::ranges::find(rows, title, &MenuItem::title);
        if (row != rows.end() && row->action) {
            row->action();
        }
    }

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
    void clearContents() override { calls.append(QStringLiteral("clear")); }
    void setString(const QString& text) override { calls.append(QStringLiteral("set:") + text); }
    void string(TextAnswer answer) override {
        if (isSlow) {
            waiting_.push_back(std::move(answer));
        } else {
            answer(contents);
        }
    }

    /// The other program gives its text at last.
    void answerAll() {
        for (auto& answer : std::exchange(waiting_, {})) {
            answer(contents);
        }
    }

    QStringList calls;
    std::optional<QString> contents; ///< what another program put there
    bool isSlow = false;             ///< whether that program takes its time to give it

private:
    std::vector<TextAnswer> waiting_;
};

class FakeUserDefaults final : public UserDefaults {
public:
    [[nodiscard]] qint64 integer(QStringView key) const override {
        const std::scoped_lock lock(mutex_);
        return integers_.value(key.toString());
    }

    [[nodiscard]] bool contains(QStringView key) const override {
        const std::scoped_lock lock(mutex_);
        return integers_.contains(key.toString());
    }

    [[nodiscard]] std::expected<SettingsSections, QString> sections() const override {
        const std::scoped_lock lock(mutex_);
        if (!sectionError_.isEmpty()) {
            return std::unexpected(sectionError_);
        }
        auto sections = sections_;
        for (auto integer = integers_.begin(); integer != integers_.end(); ++integer) {
            sections[QStringLiteral("General")].insert(integer.key(), QString::number(integer.value()));
        }
        return sections;
    }

    void setInteger(QStringView key, qint64 value) override { set(key.toString(), value); }

    [[nodiscard]] Subscription observe(std::function<void()> observer) override {
        return change_.subscribe([observer = std::move(observer)](const auto&) { observer(); });
    }

    /// As another process would, too.
    void set(const QString& key, qint64 value) {
        {
            const std::scoped_lock lock(mutex_);
            integers_.insert(key, value);
        }
        change_.set({});
    }

    void setSection(const QString& name, const QMultiMap<QString, QString>& values) {
        const std::scoped_lock lock(mutex_);
        sections_.insert(name, values);
    }

    /// From now on no section can be read.
    void failSections(const QString& error) {
        const std::scoped_lock lock(mutex_);
        sectionError_ = error;
    }

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
    void setDelegate(UserNotificationCenterDelegate* next) override {
        delegate = next;
        calls.append(QStringLiteral("setDelegate"));
    }
    void setNotificationCategories(QList<NotificationCategory> next) override {
        categories = std::move(next);
        calls.append(QStringLiteral("setNotificationCategories"));
    }
    void getNotificationSettings(SettingsAnswer answer) override {
        calls.append(QStringLiteral("getNotificationSettings"));
        answer(status);
    }
    void requestAuthorization(AuthorizationAnswer answer) override {
        calls.append(QStringLiteral("requestAuthorization"));
        answer(isGranted, authorizationError);
    }
    void add(NotificationRequest request, Completion completion) override {
        removeShown(request.identifier);
        calls.append(QStringLiteral("add:") + request.identifier.text());
        added.push_back(request);
        if (error) {
            if (completion) {
                completion(error);
            }
            return;
        }
        shown.push_back(std::move(request));
        if (completion) {
            completion({});
        }
    }

    void removeDelivered(const QList<RequestIdentifier>& identifiers) override {
        for (const auto& identifier : identifiers) {
            calls.append(QStringLiteral("removeDelivered:") + identifier.text());
            removeShown(identifier);
        }
    }

    void removePending(const QList<RequestIdentifier>& identifiers) override {
        for (const auto& identifier : identifiers) {
            calls.append(QStringLiteral("removePending:") + identifier.text());
        }
    }

    [[nodiscard]] QStringList titles() const {
        QStringList titles;
        for (const auto& request : shown) {
            titles.append(request.content.title);
        }
        return titles;
    }

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
    void removeShown(const RequestIdentifier& identifier) {
        std::erase_if(shown, [&](const auto& request) { return request.identifier == identifier; });
    }
};

/// The in-memory desktop.
struct FakePlatform {
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
