#pragma once

#include "platform/Clock.h"
#include "platform/ComputerName.h"
#include "platform/Downloads.h"
#include "platform/FileViewer.h"
#include "platform/InternalNotifications.h"
#include "platform/Log.h"
#include "platform/Pasteboard.h"
#include "platform/Platform.h"
#include "platform/UserDefaults.h"
#include "platform/UserNotificationCenter.h"

#include <QByteArrayList>
#include <QHash>
#include <QTemporaryDir>
#include <QUrl>

#include <algorithm>
#include <mutex>
#include <variant>
#include <vector>

namespace brenvale {

class FakeClock final : public Clock {
public:
    [[nodiscard]] double now() const override { return time; }

    double time = 1'700'000'000;
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

/// Records the calls as texts.
class FakePasteboard final : public Pasteboard {
public:
    void clearContents() override { calls.append(QStringLiteral("clear")); }
    void setString(const QString& text) override { calls.append(QStringLiteral("set:") + text); }
    [[nodiscard]] std::optional<QString> string() const override { return contents; }

    QStringList calls;
    std::optional<QString> contents; ///< what another program put there
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

private:
    mutable std::mutex mutex_;
    QHash<QString, qint64> integers_;
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
    void add(NotificationRequest request, Completion completion) override {
        removeShown(request.identifier);
        calls.append(QStringLiteral("add:") + request.identifier);
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

    void removeDelivered(const QStringList& identifiers) override {
        for (const auto& identifier : identifiers) {
            calls.append(QStringLiteral("removeDelivered:") + identifier);
            removeShown(identifier);
        }
    }

    void removePending(const QStringList& identifiers) override {
        for (const auto& identifier : identifiers) {
            calls.append(QStringLiteral("removePending:") + identifier);
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

private:
    void removeShown(const QString& identifier) {
        std::erase_if(shown, [&](const auto& request) { return request.identifier == identifier; });
    }
};

/// The in-memory desktop.
struct FakePlatform {
    FakeClock clock;
    FakeComputerName computerName;
    TemporaryDownloads downloads;
    FakeFileViewer fileViewer;
    InternalNotifications internalNotifications;
    RecordingLog log;
    FakePasteboard pasteboard;
    FakeUserDefaults userDefaults;
    FakeNotificationCenter userNotificationCenter;
    Platform platform{.clock = clock,
                      .computerName = computerName,
                      .downloads = downloads,
                      .fileViewer = fileViewer,
                      .internalNotifications = internalNotifications,
                      .log = log,
                      .pasteboard = pasteboard,
                      .userDefaults = userDefaults,
                      .userNotificationCenter = userNotificationCenter};
};

} // namespace brenvale
