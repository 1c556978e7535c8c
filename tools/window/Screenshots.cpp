#include "Screenshots.h"

#include "SampleStates.h"
#include "calls/ActiveCallBanner.h"
#include "calls/IncomingCallBanner.h"
#include "calls/QmlCallPanel.h"
#include "shell/QmlMainWindow.h"

#include <QApplication>
#include <QDateTime>
#include <QDir>
#include <QFontInfo>
#include <QPalette>
#include <QQuickView>

namespace brenvale {

namespace {

QPalette paletteOf(const QColor& window, const QColor& base, const QColor& text, const QColor& highlight) {
    QPalette palette(text, window, window.lighter(), window.darker(), window.darker(110), text, Qt::white,
                     base, window);
    palette.setColor(QPalette::Highlight, highlight);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    return palette;
}

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
    QmlCallPanel panel(view, banner, {.prepare = {}, .isTranslucent = true});
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

/// In the ordinary size of text, and in one and a half times that.
bool takeAllPanelScreenshots(const QString& folder) {
    TestView test;
    const auto ordinary = QApplication::font();
    auto large = ordinary;
    large.setPixelSize(QFontInfo(ordinary).pixelSize() * 3 / 2);
    const bool isGood = takePanelScreenshots(test, folder + QStringLiteral("/panel-"));
    QApplication::setFont(large);
    const bool isLargeGood = takePanelScreenshots(test, folder + QStringLiteral("/panel-large-text-"));
    QApplication::setFont(ordinary);
    return isGood && isLargeGood;
}

} // namespace

void useLightPalette() {
    QApplication::setPalette(
        paletteOf(QColor(0xef, 0xf0, 0xf1), Qt::white, QColor(0x23, 0x26, 0x29), QColor(0x2a, 0x7a, 0xd2)));
}

void useDarkPalette() {
    QApplication::setPalette(paletteOf(QColor(0x24, 0x26, 0x29), QColor(0x2f, 0x32, 0x36),
                                       QColor(0xf2, 0xf3, 0xf4), QColor(0x35, 0x84, 0xe4)));
}

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
    return takeAllPanelScreenshots(folder);
}

} // namespace brenvale
