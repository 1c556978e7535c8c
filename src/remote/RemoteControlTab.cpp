#include "remote/RemoteControlTab.h"

#include "link/WebSocketServer.h"
#include "platform/AccessibilityTrust.h"
#include "platform/Platform.h"
#include "platform/SystemSettings.h"
#include "remote/ControlPad.h"

namespace brenvale {

namespace {

QVariantList variantsOf(const QList<ControlPadButton>& buttons) {
    QVariantList variants;
    for (const auto& button : buttons) {
        variants.append(QVariant::fromValue(button));
    }
    return variants;
}

} // namespace

RemoteControlTab::RemoteControlTab(Platform& platform, WebSocketServer& server)
    : platform_(platform),
      server_(server),
      isAccessibilityEnabled_(isProcessTrusted()),
      trustChanges_(platform.accessibilityTrust.observe([this] { refreshAccessibility(); })) {}

RemoteControlTab::~RemoteControlTab() = default;

QVariantList RemoteControlTab::mediaButtons() {
    return variantsOf(brenvale::mediaButtons());
}

QVariantList RemoteControlTab::volumeButtons() {
    return variantsOf(brenvale::volumeButtons());
}

QVariantList RemoteControlTab::dPadButtons() {
    return variantsOf(brenvale::dPadButtons());
}

QVariantList RemoteControlTab::coreButtons() {
    return variantsOf(brenvale::coreButtons());
}

QVariantList RemoteControlTab::systemButtons() {
    return variantsOf(brenvale::systemButtons());
}

QVariantList RemoteControlTab::shortcutRows() {
    QVariantList rows;
    for (const auto& row : brenvale::shortcutRows()) {
        rows.append(
            QVariantMap{{QStringLiteral("key"), row.key}, {QStringLiteral("description"), row.description}});
    }
    return rows;
}

void RemoteControlTab::sendMediaCommand(const QString& command) {
    server_.sendMediaCommand(command);
}

void RemoteControlTab::sendNavCommand(const QString& command) {
    server_.sendNavCommand(command);
}

bool RemoteControlTab::isProcessTrusted() const {
    return platform_.accessibilityTrust.isProcessTrusted(false);
}

void RemoteControlTab::refreshAccessibility() {
    if (const bool isEnabled = isProcessTrusted(); isEnabled != isAccessibilityEnabled_) {
        isAccessibilityEnabled_ = isEnabled;
        emit isAccessibilityEnabledChanged();
    }
}

void RemoteControlTab::openAccessibilitySettings() {
    // A desktop that has the user consent in a dialog has no other place for it.
    if (platform_.accessibilityTrust.state() == AccessibilityTrust::State::toBeAsked) {
        platform_.accessibilityTrust.askUser();
        return;
    }
    platform_.systemSettings.open(SystemSettings::Pane::accessibility);
}

} // namespace brenvale
