#include "Screenshots.h"

#include "SampleStates.h"
#include "calls/ActiveCallBanner.h"
#include "calls/IncomingCallBanner.h"
#include "calls/QmlCallPanel.h"
#include "shell/QmlMainWindow.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QQuickView>

namespace brenvale {

namespace {

bool takeScreenshot(TestView& test, const QString& file) {
    QmlMainWindow window(test.view);
    window.makeKeyAndOrderFront();
    for (int pass = 0; pass < 3; ++pass) { // answers of the desktop come by way of the queues
        test.run();
        QCoreApplication::processEvents();
    }
    return window.view()->grabWindow().save(file);
}

/// What a call panel may have to show, by name.
struct SampleCall {
    QString name;
    IncomingCallInfo caller;
};

std::vector<SampleCall> sampleCalls() {
    const auto call = [](const char* name, const char* number, const char* caller) {
        return SampleCall{QString::fromUtf8(name),
                          {.number = QString::fromUtf8(number), .name = QString::fromUtf8(caller)}};
    };
    return {call("name", "+49 170 1234567", "Ann Lee"), call("number", "+49 170 1234567", ""),
            call("unknown", "unknown", "Unknown"),
            call("long", "+491701234567890123456789",
                 "Bartholomäus Maximilian von Hohenstein-Wittelsbach zu Neuenburg an der Donau"),
            call("right-to-left", "+972 50 1234567", "דנה כהן")};
}

bool takePanelScreenshot(const QString& view, QObject& banner, const QString& file) {
    QmlCallPanel panel(view, banner, {.prepare = {}, .usableArea = {}, .isTranslucent = true});
    panel.orderFrontRegardless();
    QCoreApplication::processEvents();
    return panel.view().grabWindow().save(file);
}

/// Of both panels in all states, as CALL-STATE.
bool takePanelScreenshots(TestView& test, const QString& start) {
    bool isGood = true;
    for (const auto& call : sampleCalls()) {
        IncomingCallBanner ringing(call.caller);
        isGood &= takePanelScreenshot(QStringLiteral("IncomingCallBanner"), ringing,
                                      start + QStringLiteral("ringing-%1.png").arg(call.name));
        auto& notifications = test.fake.internalNotifications;
        ActiveCallBanner running({.number = call.caller.number, .name = *call.caller.name}, notifications,
                                 *test.server);
        isGood &= takePanelScreenshot(QStringLiteral("ActiveCallBanner"), running,
                                      start + QStringLiteral("running-%1.png").arg(call.name));
        notifications.post(InternalNotifications::callDurationUpdated, qint64{3725});
        running.toggleMute();
        isGood &= takePanelScreenshot(QStringLiteral("ActiveCallBanner"), running,
                                      start + QStringLiteral("muted-for-an-hour-%1.png").arg(call.name));
    }
    return isGood;
}

} // namespace

bool takeScreenshots(const QString& folder) {
    if (!QDir().mkpath(folder)) {
        return false;
    }
    for (const auto& state : sampleStates()) {
        TestView test;
        test.fake.clock.time = static_cast<double>(QDateTime::currentSecsSinceEpoch());
        state.fill(test);
        for (const auto& entry : SettingsView::sidebarTabs()) {
            const auto map = entry.toMap();
            test.view.setSelectedTab(map.value(QStringLiteral("tab")).toInt());
            const auto label = map.value(QStringLiteral("label")).toString().toLower().replace(u' ', u'-');
            if (!takeScreenshot(test, folder + u'/' + label + u'-' + state.name + QStringLiteral(".png"))) {
                return false;
            }
        }
    }
    TestView test;
    return takePanelScreenshots(test, folder + QStringLiteral("/panel-"));
}

} // namespace brenvale
