#include "Screenshots.h"

#include "SampleStates.h"
#include "shell/QmlMainWindow.h"

#include <QApplication>
#include <QDateTime>
#include <QDir>
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
    return true;
}

} // namespace brenvale
