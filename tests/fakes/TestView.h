#pragma once

#include "fakes/ModelChanges.h"
#include "fakes/TestServer.h"
#include "shell/SettingsView.h"

namespace brenvale {

/// The main window's state over the in-memory platform.
struct TestView : TestServer {
    /// Connects a phone and forgets what it was greeted with.
    void connect() {
        phone = connectPhone();
        phone->sent.clear();
    }

    /// What the phone got since.
    [[nodiscard]] std::vector<QByteArray> takeSent() {
        run();
        return std::exchange(phone->sent, {});
    }

    void reportSms(const QList<SmsRecord>& log) {
        fake.internalNotifications.post(InternalNotifications::smsHistoryUpdated, log);
    }

    void reportCalls(const QList<CallRecord>& log) {
        fake.internalNotifications.post(InternalNotifications::callHistoryUpdated, log);
    }

    SettingsView view{fake.platform, main, *server, *store};
};

} // namespace brenvale
