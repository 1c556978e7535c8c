#include "link/WebSocketServer.h"
#include "remote/ControlPad.h"
#include "shell/SettingsView.h"

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

QVariantList SettingsView::mediaButtons() {
    return variantsOf(brenvale::mediaButtons());
}

QVariantList SettingsView::volumeButtons() {
    return variantsOf(brenvale::volumeButtons());
}

QVariantList SettingsView::dPadButtons() {
    return variantsOf(brenvale::dPadButtons());
}

QVariantList SettingsView::coreButtons() {
    return variantsOf(brenvale::coreButtons());
}

QVariantList SettingsView::systemButtons() {
    return variantsOf(brenvale::systemButtons());
}

QVariantList SettingsView::shortcutRows() {
    QVariantList rows;
    for (const auto& row : brenvale::shortcutRows()) {
        rows.append(
            QVariantMap{{QStringLiteral("key"), row.key}, {QStringLiteral("description"), row.description}});
    }
    return rows;
}

void SettingsView::sendMediaCommand(const QString& command) {
    server_.sendMediaCommand(command);
}

void SettingsView::sendNavCommand(const QString& command) {
    server_.sendNavCommand(command);
}

} // namespace brenvale
