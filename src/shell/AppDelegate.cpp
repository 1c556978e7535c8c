#include "shell/AppDelegate.h"

#include "link/WebSocketServer.h"
#include "records/HistoryStore.h"

namespace brenvale {

AppDelegate::AppDelegate(WebSocketServer& server)
    : server_(server), historyStore_(std::make_shared<HistoryStore>()) {}

AppDelegate::~AppDelegate() = default;

void AppDelegate::applicationDidFinishLaunching() {
    server_.historyStore = historyStore_;
    server_.start();
    activationPolicy_ = ActivationPolicy::accessory;
}

} // namespace brenvale
