#include "platform/linux/input/InputWays.h"

#include "platform/linux/input/RemoteDesktopPortal.h"
#include "platform/linux/input/WaylandEventPoster.h"
#include "platform/linux/input/X11EventPoster.h"

#include <unistd.h>

namespace brenvale {

namespace {

/// A way that is known to be there and not built yet.
class FutureWay final : public EventPoster {
public:
    [[nodiscard]] bool canMakeEvents() const override { return true; }
    [[nodiscard]] QPointF pointerLocation() const override { return {}; }
    void post(const KeyEvent& /*event*/) override {}
    void post(const SystemDefinedEvent& /*event*/) override {}
    void post(const MouseEvent& /*event*/) override {}
};

} // namespace

InputWays inputWays(const Display& display, DispatchQueue& main, TextLender* lender) {
    InputWays input;
    const bool isWayland = display.kind == Display::Kind::wayland;
    if (display.takesEvents && isWayland) {
        input.ways.push_back(std::make_unique<WaylandEventPoster>());
    } else if (display.takesEvents) {
        input.ways.push_back(std::make_unique<X11EventPoster>());
    } else if (isWayland) {
        auto portal = std::make_unique<RemoteDesktopPortal>(main, lender);
        input.consent = portal.get();
        input.ways.push_back(std::move(portal));
    }
    if (::access("/dev/uinput", W_OK) == 0) {
        input.ways.push_back(std::make_unique<FutureWay>());
    }
    return input;
}

} // namespace brenvale
