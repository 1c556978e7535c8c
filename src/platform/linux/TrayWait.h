#pragma once

#include <QAbstractNativeEventFilter>
#include <QObject>

#include <functional>

namespace brenvale {

/// Waits for the desktop's tray. The toolkit decides at the first tray icon of a process which kind of tray
/// there is, for good; a program that starts at login before the panel does would be left without an item. So
/// no icon is made before there is a tray for it. On main.
class TrayWait final : public QObject, public QAbstractNativeEventFilter {
    Q_OBJECT

public:
    /// Calls `found` once, by a step of its own or later, and `missing` before it where ten seconds have
    /// brought no tray.
    TrayWait(std::function<void()> found, std::function<void()> missing);
    ~TrayWait() override;
    TrayWait(const TrayWait&) = delete;
    TrayWait& operator=(const TrayWait&) = delete;

    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

private slots:
    void askForHost();

private:
    void endPatience();
    void lookForOldTray();
    void finish();

    std::function<void()> found_;
    std::function<void()> missing_;
    bool hadItsChance_ = false; ///< the new kind of tray: from then on the old one serves as well
};

} // namespace brenvale
