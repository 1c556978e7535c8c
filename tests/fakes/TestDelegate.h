#pragma once

#include "fakes/TestServer.h"
#include "shell/AppDelegate.h"
#include "shell/MainWindow.h"

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

/// The root of the process over the in-memory desktop.
struct TestDelegate : TestServer {
    AppDelegate delegate{fake.platform, main, *server, [this](SettingsView& view) {
                             auto made = std::make_unique<FakeMainWindow>();
                             window = made.get();
                             settingsView = &view;
                             ++windowsMade;
                             return made;
                         }};
    FakeMainWindow* window = nullptr; ///< once it was made
    SettingsView* settingsView = nullptr;
    int windowsMade = 0;
};

} // namespace brenvale
