#pragma once

#include "Measuring.h"

#include "fakes/FakePlatform.h"
#include "link/LinkQueue.h"
#include "link/TcpListener.h"
#include "link/WebSocketServer.h"
#include "platform/Downloads.h"
#include "platform/InternalNotifications.h"
#include "platform/MainQueue.h"
#include "platform/Platform.h"
#include "platform/UserDefaults.h"
#include "platform/UserNotificationCenter.h"
#include "platform/linux/DBusFileViewer.h"
#include "platform/linux/HostnamedComputerName.h"
#include "platform/linux/QtPasteboard.h"
#include "platform/linux/StandardOutputLog.h"
#include "platform/linux/SystemClock.h"
#include "records/HistoryStore.h"

#include <atomic>

namespace brenvale {
class Phone;
}

namespace brenvale::bench {

/// Whether a message of the desktop carries the end of a file.
[[nodiscard]] bool isLastChunk(const QByteArray& message);

/// The real link, log and store, over loopback. Only the desktop's notification server is left out: it takes
/// a few thousand notifications a second at best, and requests are counted instead.
class LinkLoad {
public:
    explicit LinkLoad(quint16 port);

    /// Notifications a second from `phones` connections to the store on the main thread.
    [[nodiscard]] double notificationsPerSecond(int phones, int count);

    /// Microseconds from a phone's message by way of the main thread to the answer at the phone.
    [[nodiscard]] Distribution roundTripMicroseconds(int count);

    struct Incoming {
        double bytesPerSecond;     ///< payload
        double linkSecondsForByte; ///< that a processor works for the link's thread
    };
    /// A file from one phone to `folder`, in chunks of 1 MiB. With `escapesSlashes` every slash of the base64
    /// comes as "\\/", as Android writes JSON.
    [[nodiscard]] Incoming receiveFile(const QString& folder, int mebibytes, bool escapesSlashes);

    struct Waits {
        Distribution ping;     ///< milliseconds until the link has answered the ping of another phone
        Distribution mainStep; ///< milliseconds until a step of the main queue has begun
    };
    /// How long others wait while a file comes in and a view follows the list of transfers.
    [[nodiscard]] Waits waitsDuringUpload(const QString& folder, int mebibytes);

    struct Outgoing {
        double queuedSeconds;      ///< until the whole file has been read
        double sentSeconds;        ///< until the phone has the last of it
        double linkSecondsForByte; ///< that a processor works for the link's thread
    };
    /// A file from the desktop to one phone.
    [[nodiscard]] Outgoing sendFile(const QString& path);

    /// Sends a file to the phone of another process once that has told its name; then serves for ever.
    [[noreturn]] void sendFileToNamedPhone(const QString& path);

private:
    struct Settings final : UserDefaults {
        [[nodiscard]] qint64 integer(QStringView /*key*/) const override { return port; }
        [[nodiscard]] bool contains(QStringView key) const override { return key == u"port"; }
        [[nodiscard]] std::expected<SettingsSections, QString> sections() const override { return {}; }
        void setInteger(QStringView /*key*/, qint64 /*value*/) override {}
        [[nodiscard]] Subscription observe(std::function<void()> /*observer*/) override { return {}; }
        qint64 port = 0;
    };
    struct CountingCenter final : UserNotificationCenter {
        void setDelegate(UserNotificationCenterDelegate* /*delegate*/) override {}
        void setNotificationCategories(QList<NotificationCategory> /*categories*/) override {}
        void getNotificationSettings(SettingsAnswer answer) override {
            answer(AuthorizationStatus::authorized);
        }
        void requestAuthorization(AuthorizationAnswer answer) override { answer(true, {}); }
        void add(NotificationRequest /*request*/, Completion completion) override {
            if (completion) {
                completion({});
            }
            ++requests;
        }
        void removeDelivered(const QList<RequestIdentifier>& /*identifiers*/) override {}
        void removePending(const QList<RequestIdentifier>& /*identifiers*/) override {}
        std::atomic<int> requests = 0;
    };

    struct Folder final : Downloads {
        [[nodiscard]] QString folder() const override { return path; }
        QString path;
    };

    void connect(Phone& phone) const;
    [[nodiscard]] double linkCpuSeconds();

    FakeAccessibilityTrust accessibilityTrust_;
    FakeAddressWatch addressWatch_;
    FakeAlerts alerts_;
    SystemClock clock_;
    HostnamedComputerName computerName_;
    Folder downloads_;
    RecordingEventPoster eventPoster_;
    DBusFileViewer fileViewer_;
    InternalNotifications internalNotifications_;
    StandardOutputLog log_;
    FakeLoginItem loginItem_;
    QtPasteboard pasteboard_;
    FakeScriptRunner scriptRunner_;
    FakeStatusItem statusItem_;
    FakeSystemSettings systemSettings_;
    FakeSystemSleep systemSleep_;
    Settings settings_;
    CountingCenter center_;
    Platform platform_{.accessibilityTrust = accessibilityTrust_,
                       .addressWatch = addressWatch_,
                       .alerts = alerts_,
                       .clock = clock_,
                       .computerName = computerName_,
                       .downloads = downloads_,
                       .eventPoster = eventPoster_,
                       .fileViewer = fileViewer_,
                       .internalNotifications = internalNotifications_,
                       .log = log_,
                       .loginItem = loginItem_,
                       .pasteboard = pasteboard_,
                       .scriptRunner = scriptRunner_,
                       .statusItem = statusItem_,
                       .systemSettings = systemSettings_,
                       .systemSleep = systemSleep_,
                       .userDefaults = settings_,
                       .userNotificationCenter = center_};
    std::atomic<bool> isListening_ = false;
    std::atomic<bool> isFileUnderWay_ = false; ///< an incoming one
    MainQueue main_;
    std::shared_ptr<HistoryStore> store_ = std::make_shared<HistoryStore>();
    LinkQueue queue_;
    TcpTransport transport_{queue_};
    std::shared_ptr<WebSocketServer> server_;
};

} // namespace brenvale::bench
