#pragma once

#include "link/AccessRules.h"
#include "link/MainBacklog.h"
#include "link/Transport.h"
#include "records/CallRecord.h"
#include "records/IncomingCallInfo.h"
#include "records/SmsRecord.h"
#include "transfer/Base64.h"
#include "transfer/FileWriteSession.h"

#include <QHash>
#include <QUuid>

#include <functional>
#include <memory>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace brenvale {

class DispatchQueue;
class EventPoster;
class HistoryStore;
class JsonObject;
class JsonReader;
class NotificationManager;
struct CallReport;
struct FileTransferRecord;
struct Platform;

/// The one endpoint of the link to the phone: it accepts whoever connects, gathers messages, acts on them,
/// and sends what the desktop has to say to every connection alike. It authenticates nobody and tells no two
/// apart.
///
/// Two queues, no locks: what is marked "on queue" runs on the serial queue "ws.server", what is marked "on
/// main" on the main queue. Nothing reaches the store but by a step on main, and the queue never waits for
/// such a step.
class WebSocketServer : public std::enable_shared_from_this<WebSocketServer> {
public:
    using SmsRecord = brenvale::SmsRecord;
    using CallRecord = brenvale::CallRecord;
    using IncomingCallInfo = brenvale::IncomingCallInfo;
    using FileWriteSession = brenvale::FileWriteSession;

    /// The process's instance; setting it is the business of `main`, before anything asks for it.
    static WebSocketServer& shared();
    static void setShared(std::shared_ptr<WebSocketServer> server);

    /// All arguments must outlive the server.
    WebSocketServer(Platform& platform, Transport& transport, DispatchQueue& queue, DispatchQueue& main);
    ~WebSocketServer();
    WebSocketServer(const WebSocketServer&) = delete;
    WebSocketServer& operator=(const WebSocketServer&) = delete;

    /// Where the phone's data goes; writes are skipped while it is gone. Set before `start`, then read on
    /// main.
    std::weak_ptr<HistoryStore> historyStore;

    /// Gets the listener's state as a text for people. Set before `start`; called on queue, and on the
    /// caller's thread where `start` fails at once.
    std::function<void(const QString&)> onStatusChange;

    // link/WebSocketServer.cpp

    /// The TCP port of the settings, read afresh: 8765 unless the user set one. A port above 65535 is fatal.
    /// Any thread.
    [[nodiscard]] quint16 port() const;

    /// Listens on `port`, after dropping whatever listener and connections there are. Returns at once; a
    /// listener that fails is tried again every 5 seconds. On main.
    void start();

    /// Drops the listener and all connections. On main.
    void stop();

    /// Gives up every phone that shows no sign of life within some ten seconds. Any thread.
    void checkConnections();

    /// Queues one text message (UTF-8) to every connection; without one it vanishes. Any thread, never
    /// blocks.
    void send(QByteArray text);

    // transfer/OutgoingFiles.cpp. Any thread.

    /// Sends a local file to every phone. Returns at once; one step on the queue reads the whole file, and
    /// only then does its first message leave, so that files sent together never mix. The user is told of the
    /// end.
    void sendFile(const QUrl& url);

    // link/OutboundCommands.cpp. Any thread. Each sends one message and hears nothing of what becomes of it:
    // only the phone's later messages show that. Without a phone it vanishes.
    void findDevice();
    void sendMediaCommand(const QString& command);
    void sendNavCommand(const QString& command);
    void requestSmsHistory();
    void requestCallHistory();
    void sendClipboard(const QString& text);
    void makeCall(const QString& number, qint64 simSlot); ///< the number goes out unescaped
    void answerCall();
    void hangupCall();
    void toggleSpeaker(bool enabled);
    void toggleMute(bool enabled);
    void sendReply(const QString& key,
                   const QString& text); ///< `key` is the notification's request identifier
    void sendSms(const QString& number, const QString& body, qint64 simSlot);

private:
    using ConnectionPointer = std::shared_ptr<Connection>;
    using StoreStep = std::move_only_function<void(HistoryStore*)>;

    // link/WebSocketServer.cpp. On main.
    [[nodiscard]] AccessRules readAccessRules() const;

    // link/WebSocketServer.cpp. On queue.
    void listenerChanged(const Listener::StateReport& report);
    void accept(const ConnectionPointer& connection);
    void connectionChanged(const ConnectionPointer& connection, const Connection::StateReport& report);
    void greet(const ConnectionPointer& connection);
    void receive(const ConnectionPointer& connection);
    void received(const ConnectionPointer& connection, Connection::Delivery delivery);
    void receiveAgain(const ConnectionPointer& connection, bool hasLeftSteps);
    void markBacklog(const ConnectionPointer& connection, MainBacklog& backlog);
    void mainCaughtUp(const ConnectionPointer& connection);
    void remove(const ConnectionPointer& connection);
    void reportStatus(const QString& status) const;
    void logOf(const Connection& connection, QByteArrayView before, QByteArrayView after) const;

    // link/InboundDispatch.cpp. On queue.
    void handle(const MessageBuffer& data);
    void handleSmsHistory(const JsonObject& json);
    void handleCallHistory(const JsonObject& json);
    void handleSimInfo(const JsonObject& json);
    void handleDeviceInfo(const JsonObject& json);
    void handleClipboard(const JsonObject& json);
    void handleNotification(const JsonObject& json);
    void setDeviceName(const JsonObject& json);

    // calls/CallEvents.cpp. On queue.
    void handleCallEvent(const JsonObject& json);
    void showCall(const CallReport& report);

    // notifications/BatteryAlerts.cpp. On queue, and on main.
    void handleBatteryStatus(const JsonObject& json);
    void batteryReported(std::optional<qint64> level, bool isCharging, HistoryStore* store);

    // transfer/IncomingFiles.cpp. On queue.
    void handleFileTransferStart(const JsonObject& json);
    void handleFileChunk(const JsonObject& json);
    void finalizeIncomingFile(const QString& fileName);

    // transfer/IncomingFiles.cpp. On queue. The row follows a transfer as fast as main does: one report of it
    // is on its way there at a time, and the latest of those that came meanwhile goes next.
    void reportProgress(const QUuid& id, double progress);
    void progressReported(const QUuid& id);

    // transfer/OutgoingFiles.cpp. On queue. The errors are the file's.
    std::expected<void, QString> queueFile(const QUrl& url);
    std::expected<void, QString> queueChunks(QFile& file, const FileTransferRecord& record);

    // remote/RemoteControl.cpp. On queue; the scripts and the pointer go to main.
    void handleRemoteControl(const JsonObject& json);
    void handleMouseMove(const JsonObject& json);
    void handleMouseClick(const JsonObject& json);
    void pressMediaKey(std::string_view command);
    void performCommand(std::string_view command, const JsonObject& json);
    [[nodiscard]] bool checkAccess(std::string_view command);
    void runScript(QString source);

    // remote/InputInjection.cpp. On queue. Events that cannot be made are left out without a word.
    void sendCGKey(quint16 keyCode, const std::vector<std::string_view>& modifiers);
    void sendSystemMediaKey(qint32 key);
    void sendUnicodeText(const QString& text);

    // remote/InputInjection.cpp. On main.
    static void moveMouse(EventPoster& poster, double dx, double dy);
    static void clickMouse(EventPoster& poster, bool isRight);

    // link/WebSocketServer.cpp. Any thread.
    void sendText(std::shared_ptr<const OutgoingText> text);

    // link/WebSocketServer.cpp. The only ways from one queue to the other: the server is held weakly, and the
    // store is looked up inside the step, which always runs and gets null once server or store is gone.
    void onMain(StoreStep step); ///< on queue; what a message leaves there counts against its phone
    void onStore(std::move_only_function<void(HistoryStore&)> step); ///< onMain, and only while there is one
    void postToMain(StoreStep step);                                 ///< any thread; counts against nobody
    void onQueue(std::move_only_function<void(WebSocketServer&)> step); ///< any thread

    Platform& platform_;
    Transport& transport_;
    DispatchQueue& queue_;
    DispatchQueue& main_;
    std::shared_ptr<NotificationManager> notificationManager_; ///< shared with steps that outlive the server

    /// Main only, but for the pointee's own calls.
    std::shared_ptr<Listener> listener_;

    /// Main only.
    struct Battery {
        std::optional<qint64>
            lastBatteryAlertThreshold; ///< the stage that fired last since a charger was plugged in
    } battery_;

    /// Queue only. The phone's name for a file is the key: transfers do not belong to a connection.
    struct Incoming {
        std::unordered_map<QString, FileWriteSession> incomingFileSessions;
        QHash<QString, QUuid> activeTransfers;               ///< the rows of the transfer list
        QHash<QUuid, std::optional<double>> progressReports; ///< those on their way, and what goes next
        Base64Decoder decoder;
    } incoming_;

    /// Queue only.
    struct Link {
        AccessRules access; ///< as the settings had them when the listener was started
        std::vector<ConnectionPointer> connections; ///< in order of acceptance
        std::unordered_map<const Connection*, MessageBuffer> connectionBuffers;
        std::unique_ptr<JsonReader> reader;
        OutgoingSpool spool; ///< the files that wait to be sent
        std::unordered_map<const Connection*, MainBacklog> backlogs;
        std::size_t stepsForMain = 0; ///< all that onMain was ever given
        std::size_t bytesForMain = 0; ///< what of the message at hand its steps hold, at most
    } link_;
};

} // namespace brenvale
