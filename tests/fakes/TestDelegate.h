#pragma once

#include "calls/CallWindows.h"
#include "fakes/TestServer.h"
#include "shell/AppDelegate.h"
#include "shell/MainWindow.h"

#include <QPointer>

namespace brenvale {

/// A window without anything to see.
class FakeMainWindow final : public MainWindow {
public:
    [[nodiscard]] bool isVisible() const override { return isShown; }
    void makeKeyAndOrderFront() override {
        isShown = true;
        ++timesOrderedFront;
    }

    /// The user closes it.
    void close() {
        isShown = false;
        windowWillClose();
    }

    bool isShown = false;
    int timesOrderedFront = 0;
};

/// A panel without anything to see, which notes what becomes of it.
class FakeFloatingPanel final : public FloatingPanel {
public:
    FakeFloatingPanel(QString name, QStringList& calls) : name_(std::move(name)), calls_(calls) {
        calls_.append(name_ + QStringLiteral(" made"));
    }
    ~FakeFloatingPanel() override { calls_.append(name_ + QStringLiteral(" gone")); }
    FakeFloatingPanel(const FakeFloatingPanel&) = delete;
    FakeFloatingPanel& operator=(const FakeFloatingPanel&) = delete;

    void orderFrontRegardless() override { calls_.append(name_ + QStringLiteral(" front")); }
    void orderOut() override { calls_.append(name_ + QStringLiteral(" out")); }

private:
    QString name_;
    QStringList& calls_;
};

/// The banners on show, and what became of their panels.
struct FakeCallPanels {
    [[nodiscard]] CallWindows::MakePanels maker() {
        return {.incoming = [this](IncomingCallBanner& banner) -> std::unique_ptr<FloatingPanel> {
                    incoming = &banner;
                    return std::make_unique<FakeFloatingPanel>(QStringLiteral("incoming"), calls);
                },
                .active = [this](ActiveCallBanner& banner) -> std::unique_ptr<FloatingPanel> {
                    active = &banner;
                    return std::make_unique<FakeFloatingPanel>(QStringLiteral("active"), calls);
                }};
    }

    QStringList calls;
    QPointer<IncomingCallBanner> incoming; ///< the last one; null once it is gone
    QPointer<ActiveCallBanner> active;
};

/// The root of the process over the in-memory desktop.
struct TestDelegate : TestServer {
    FakeCallPanels panels; ///< outlives the delegate
    AppDelegate delegate{fake.platform, main, *server,
                         [this](SettingsView& view) {
                             auto made = std::make_unique<FakeMainWindow>();
                             window = made.get();
                             settingsView = &view;
                             ++windowsMade;
                             return made;
                         },
                         panels.maker()};
    FakeMainWindow* window = nullptr; ///< once it was made
    SettingsView* settingsView = nullptr;
    int windowsMade = 0;
};

} // namespace brenvale
