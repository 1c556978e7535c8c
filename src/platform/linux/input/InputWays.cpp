#include "platform/linux/input/InputWays.h"

#include "platform/linux/input/RemoteDesktopPortal.h"
#include "platform/linux/input/UinputEventPoster.h"
#include "platform/linux/input/WaylandEventPoster.h"
#include "platform/linux/input/X11EventPoster.h"

namespace brenvale {

InputWays inputWays(const Display& display, DispatchQueue& main, TextLender* lender) {
    InputWays input;
    const bool isWayland = display.kind == Display::Kind::wayland;
    if (display.takesEvents && isWayland) {
        input.ways.push_back(std::make_unique<WaylandEventPoster>());
    } else if (display.takesEvents) {
        auto server = std::make_unique<X11EventPoster>();
        input.putBack = [server = server.get()] {
            server->end();
        };
        input.ways.push_back(std::move(server));
    } else if (isWayland) {
        auto portal = std::make_unique<RemoteDesktopPortal>(main, lender);
        input.consent = portal.get();
        input.ways.push_back(std::move(portal));
        input.ways.push_back(std::make_unique<UinputEventPoster>(kernelInput(), input.consent));
    } else {
        input.ways.push_back(std::make_unique<UinputEventPoster>(kernelInput()));
    }
    return input;
}

} // namespace brenvale
