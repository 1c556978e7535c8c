#pragma once

#include "platform/linux/wayland/WaylandNotifier.h"

#include <QDeadlineTimer>

#include <chrono>
#include <memory>
#include <set>

struct wl_keyboard;
struct wl_seat;

namespace brenvale {

/// Follows the layouts of the seat's keyboard, without the focus, on a Wayland connection of its own. One
/// thread, with an event loop; never blocks.
class LayoutReader {
public:
    /// How long after a change of the layouts nothing counts as known.
    static constexpr std::chrono::milliseconds usualSettlingTime = std::chrono::seconds(5);

    explicit LayoutReader(std::chrono::milliseconds settlingTime = usualSettlingTime);
    ~LayoutReader();
    LayoutReader(const LayoutReader&) = delete;
    LayoutReader& operator=(const LayoutReader&) = delete;

    /// What can be typed whichever layout is active. Empty while no keyboard is known, and for a while after
    /// the user has changed the layouts: other parts of the desktop learn of that later than we do.
    [[nodiscard]] const std::set<quint32>& keysyms() const;

private:
    void follow();
    void read(std::uint32_t format, int file, std::uint32_t size);
    static void capabilities(void* data, wl_seat* seat, std::uint32_t capabilities);
    static void keymap(void* data, wl_keyboard* keyboard, std::uint32_t format, int file, std::uint32_t size);

    std::unique_ptr<WaylandNotifier> wayland_; ///< null where there is no compositor
    wl_seat* seat_ = nullptr;                  ///< owned, as the next
    wl_keyboard* keyboard_ = nullptr;
    std::set<quint32> keysyms_;
    bool hasKeymap_ = false;
    QDeadlineTimer settled_{0};
    const std::chrono::milliseconds settlingTime_;
};

} // namespace brenvale
