#pragma once

#include "SeenInput.h"
#include "TestVariable.h"

#include <QTemporaryDir>

#include <atomic>
#include <mutex>
#include <thread>

#include <wayland-server-core.h>

namespace brenvale {

/// A compositor without a screen that gives its clients keyboards and pointers of their own, on a thread of
/// its own, and writes down what they do as a program with the focus would take it. The environment names it
/// while it lives.
class InputCompositor {
public:
    InputCompositor();
    ~InputCompositor();
    InputCompositor(const InputCompositor&) = delete;
    InputCompositor& operator=(const InputCompositor&) = delete;

    [[nodiscard]] SeenInput& seen() { return seen_; }

    /// The modifiers that a keyboard said last are held, as bits.
    [[nodiscard]] std::uint32_t held() const { return held_; }

    /// Stands still until `resume`, of the same thread.
    void stall() { standstill_.lock(); }
    void resume() { standstill_.unlock(); }

    // For the requests, on the thread.
    void keymap(int file, std::uint32_t size);
    void key(std::uint32_t code, bool isDown);
    void modifiers(std::uint32_t depressed);

private:
    void run();

    QTemporaryDir folder_;
    TestVariable folderVariable_{"XDG_RUNTIME_DIR", folder_.path().toUtf8()};
    wl_display* display_ = wl_display_create();
    TestVariable displayVariable_{"WAYLAND_DISPLAY", wl_display_add_socket_auto(display_)};

    // Of the thread, as is the display, while that runs.
    XkbContext context_{xkb_context_new(XKB_CONTEXT_NO_ENVIRONMENT_NAMES)};
    XkbKeymap keymap_;
    XkbState state_;

    std::atomic<std::uint32_t> held_ = 0;
    SeenInput seen_;
    std::mutex standstill_; ///< whoever holds it keeps the thread from dealing with requests
    std::atomic<bool> isEnding_ = false;
    std::thread thread_;
};

} // namespace brenvale
