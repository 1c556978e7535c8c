#pragma once

#include "fakes/TestPhone.h"
#include "shell/SettingsView.h"

namespace brenvale {

/// The state of the whole main window over the in-memory platform.
struct TestView : TestPhone {
    void reportSms(const QList<SmsRecord>& log) {
        fake.internalNotifications.post(InternalNotifications::smsHistoryUpdated, log);
    }

    void reportCalls(const QList<CallRecord>& log) {
        fake.internalNotifications.post(InternalNotifications::callHistoryUpdated, log);
    }

    SettingsView view{fake.platform, main, *server, *store};
};

} // namespace brenvale
