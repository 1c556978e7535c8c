#pragma once

#include "records/Published.h"

#include <QObject>
#include <QVariantList>

namespace brenvale {

class WebSocketServer;
struct Platform;

/// The state of the tab that presses keys of the phone and warns where the phone's own do not reach this
/// desktop. On main.
class RemoteControlTab final : public QObject {
    Q_OBJECT
    Q_PROPERTY(QVariantList mediaButtons READ mediaButtons CONSTANT)
    Q_PROPERTY(QVariantList volumeButtons READ volumeButtons CONSTANT)
    Q_PROPERTY(QVariantList dPadButtons READ dPadButtons CONSTANT)
    Q_PROPERTY(QVariantList coreButtons READ coreButtons CONSTANT)
    Q_PROPERTY(QVariantList systemButtons READ systemButtons CONSTANT)
    Q_PROPERTY(QVariantList shortcutRows READ shortcutRows CONSTANT)
    Q_PROPERTY(bool isAccessibilityEnabled READ isAccessibilityEnabled NOTIFY isAccessibilityEnabledChanged)

public:
    /// All arguments must outlive the tab.
    RemoteControlTab(Platform& platform, WebSocketServer& server);
    ~RemoteControlTab() override;
    RemoteControlTab(const RemoteControlTab&) = delete;
    RemoteControlTab& operator=(const RemoteControlTab&) = delete;

    /// Values of `ControlPadButton`; `sendNavCommand` sends those of the last three, and `dPadButtons` are
    /// up, left, centre, right and down.
    [[nodiscard]] static QVariantList mediaButtons();
    [[nodiscard]] static QVariantList volumeButtons();
    [[nodiscard]] static QVariantList dPadButtons();
    [[nodiscard]] static QVariantList coreButtons();
    [[nodiscard]] static QVariantList systemButtons();

    /// Maps with "key" and "description".
    [[nodiscard]] static QVariantList shortcutRows();

    Q_INVOKABLE void sendMediaCommand(const QString& command);
    Q_INVOKABLE void sendNavCommand(const QString& command);

    /// Whether the phone's keys and pointer reach other programs, as far as was told or looked at.
    [[nodiscard]] bool isAccessibilityEnabled() const { return isAccessibilityEnabled_; }
    Q_INVOKABLE void refreshAccessibility();
    Q_INVOKABLE void openAccessibilitySettings();

signals:
    void isAccessibilityEnabledChanged();

private:
    [[nodiscard]] bool isProcessTrusted() const;

    Platform& platform_;
    WebSocketServer& server_;
    bool isAccessibilityEnabled_;
    Subscription trustChanges_; ///< last: no observer is called while the rest goes
};

} // namespace brenvale
