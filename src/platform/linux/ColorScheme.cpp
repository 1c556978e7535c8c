#include "platform/linux/ColorScheme.h"

#include "platform/linux/CurrentDesktop.h"
#include "platform/linux/input/PortalNames.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QPalette>

namespace brenvale {

namespace {

const QString settings = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearance = QStringLiteral("org.freedesktop.appearance");
const QString colorScheme = QStringLiteral("color-scheme");

/// The colours of GNOME's own programs, which their title bars have as well.
QPalette darkPalette() {
    const QColor window(0x22, 0x22, 0x26);
    const QColor button(0x3a, 0x3a, 0x3e);
    const QColor base(0x1d, 0x1d, 0x20);
    QPalette palette(Qt::white, button, button.lighter(), QColor(0x10, 0x10, 0x12), QColor(0x2e, 0x2e, 0x32),
                     Qt::white, Qt::white, base, window);
    palette.setColor(QPalette::AlternateBase, QColor(0x28, 0x28, 0x2c));
    palette.setColor(QPalette::Highlight, QColor(0x35, 0x84, 0xe4));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, QColor(0x78, 0xae, 0xed));
    palette.setColor(QPalette::LinkVisited, QColor(0xc0, 0x9c, 0xe6));
    palette.setColor(QPalette::ToolTipBase, button);
    palette.setColor(QPalette::ToolTipText, Qt::white);
    const QColor faint(255, 255, 255, 128);
    palette.setColor(QPalette::PlaceholderText, faint);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(QPalette::Disabled, role, faint);
    }
    return palette;
}

bool isDark(const QPalette& palette) {
    return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
}

} // namespace

ColorScheme::ColorScheme() {
    auto bus = QDBusConnection::sessionBus();
    if (!bus.isConnected() || currentDesktop().contains(QStringLiteral("KDE"))) {
        return; // Plasma's theme has a scheme of the user's own
    }
    auto* portal =
        new QDBusServiceWatcher(portalService, bus, QDBusServiceWatcher::WatchForRegistration, this);
    connect(portal, &QDBusServiceWatcher::serviceRegistered, this, &ColorScheme::ask);
    bus.connect(portalService, portalPath, settings, QStringLiteral("SettingChanged"),
                {appearance, colorScheme}, QStringLiteral("ssv"), this, SLOT(ask()));
    ask();
}

void ColorScheme::ask() {
    auto call = QDBusMessage::createMethodCall(portalService, portalPath, settings, QStringLiteral("Read"));
    call << appearance << colorScheme;
    call.setAutoStartService(false);
    auto* watcher = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* finished) {
        const QDBusPendingReply<QDBusVariant> reply = *finished;
        finished->deleteLater();
        if (!reply.isError()) { // the value stands in a variant of its own
            apply(reply.value().variant().value<QDBusVariant>().variant());
        }
    });
}

void ColorScheme::apply(const QVariant& preference) {
    constexpr uint preferDark = 1;
    const bool isWanted = preference.toUInt() == preferDark;
    if (isWanted && !isDark_ && !isDark(QApplication::palette())) {
        isDark_ = true;
        QApplication::setPalette(darkPalette());
    } else if (!isWanted && isDark_) {
        isDark_ = false;
        QApplication::setPalette(QPalette()); // the desktop's own again
    }
}

} // namespace brenvale
