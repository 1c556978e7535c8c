#pragma once

#include "platform/PanelSurface.h"
#include "platform/linux/wayland/WaylandConnection.h"

#include <memory>

namespace brenvale {

/// The pointer over a panel's surface, the only one of its connection. Tells `panel` what it does. To be
/// destroyed before the connection. On main.
class PanelPointer {
public:
    /// All arguments must outlive it.
    PanelPointer(WaylandConnection& connection, wl_compositor& compositor, wl_shm& memory,
                 PanelSurface& panel);
    ~PanelPointer();
    PanelPointer(const PanelPointer&) = delete;
    PanelPointer& operator=(const PanelPointer&) = delete;

private:
    struct Objects;
    struct Listeners;

    void showArrow(std::uint32_t serial);

    WaylandConnection& connection_;
    wl_compositor& compositor_;
    wl_shm& memory_;
    PanelSurface& panel_;
    std::unique_ptr<Objects> objects_;
};

} // namespace brenvale
