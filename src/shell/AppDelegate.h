#pragma once

#include <memory>

namespace brenvale {

class HistoryStore;
class WebSocketServer;

/// The root of the process: it owns the store, wires the phone link to it, and brings everything up in order.
/// On main.
class AppDelegate {
public:
    /// Whether the program shows among the running ones, in the task bar for instance.
    enum class ActivationPolicy { regular, accessory };

    explicit AppDelegate(WebSocketServer& server);
    ~AppDelegate();
    AppDelegate(const AppDelegate&) = delete;
    AppDelegate& operator=(const AppDelegate&) = delete;

    /// Called once when the event loop is about to run. No step depends on the success of an earlier one.
    void applicationDidFinishLaunching();

    /// The program lives in the background: closing windows never ends it.
    [[nodiscard]] static bool applicationShouldTerminateAfterLastWindowClosed() { return false; }

    [[nodiscard]] HistoryStore& historyStore() { return *historyStore_; }
    [[nodiscard]] ActivationPolicy activationPolicy() const { return activationPolicy_; }

private:
    WebSocketServer& server_;
    std::shared_ptr<HistoryStore> historyStore_; ///< shared only so that the server can hold it weakly
    ActivationPolicy activationPolicy_ = ActivationPolicy::regular;
};

} // namespace brenvale
