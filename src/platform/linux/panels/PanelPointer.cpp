#include "platform/linux/panels/PanelPointer.h"

#include <algorithm>

#include <linux/input-event-codes.h>
#include <wayland-cursor.h>

namespace brenvale {

namespace {

constexpr int ordinaryCursorSize = 24;
constexpr int largestCursorSize = 256;

int cursorSize() {
    const int size = qEnvironmentVariableIntValue("XCURSOR_SIZE");
    return size > 0 ? std::min(size, largestCursorSize) : ordinaryCursorSize;
}

} // namespace

struct PanelPointer::Objects {
    std::unique_ptr<wl_seat, WaylandDestroy<wl_seat_destroy>> seat;
    std::unique_ptr<wl_pointer, WaylandDestroy<wl_pointer_destroy>> pointer; ///< while the seat has one
    std::unique_ptr<wl_cursor_theme, WaylandDestroy<wl_cursor_theme_destroy>> theme;
    std::unique_ptr<wl_surface, WaylandDestroy<wl_surface_destroy>> cursor;
};

/// What the compositor tells us.
struct PanelPointer::Listeners {
    static void capabilities(void* data, wl_seat* seat, std::uint32_t capabilities) {
        auto& self = *static_cast<PanelPointer*>(data);
        const bool hasPointer = (capabilities & WL_SEAT_CAPABILITY_POINTER) != 0;
        if (!hasPointer) {
            self.objects_->pointer.reset();
        } else if (!self.objects_->pointer) {
            self.objects_->pointer.reset(wl_seat_get_pointer(seat));
            wl_pointer_add_listener(self.objects_->pointer.get(), &pointerListener(), &self);
        }
    }

    /// Without the events of later versions, whose number depends on the library's.
    static const wl_pointer_listener& pointerListener() {
        static const auto listener = [] {
            wl_pointer_listener events{};
            events.enter = entered;
            events.leave = left;
            events.motion = moved;
            events.button = button;
            events.axis = scrolled;
            return events;
        }();
        return listener;
    }

    static void entered(void* data, wl_pointer* pointer, std::uint32_t serial, wl_surface* /*surface*/,
                        wl_fixed_t x, wl_fixed_t y) {
        static_cast<PanelPointer*>(data)->showArrow(serial);
        moved(data, pointer, 0, x, y);
    }

    static void left(void* data, wl_pointer* /*pointer*/, std::uint32_t /*serial*/, wl_surface* /*surface*/) {
        static_cast<PanelPointer*>(data)->panel_.pointerLeft();
    }

    static void moved(void* data, wl_pointer* /*pointer*/, std::uint32_t /*time*/, wl_fixed_t x,
                      wl_fixed_t y) {
        static_cast<PanelPointer*>(data)->panel_.pointerMoved({wl_fixed_to_double(x), wl_fixed_to_double(y)});
    }

    static void button(void* data, wl_pointer* /*pointer*/, std::uint32_t /*serial*/, std::uint32_t /*time*/,
                       std::uint32_t button, std::uint32_t state) {
        if (button == BTN_LEFT) {
            static_cast<PanelPointer*>(data)->panel_.buttonChanged(state == WL_POINTER_BUTTON_STATE_PRESSED);
        }
    }

    static void scrolled(void* /*data*/, wl_pointer* /*pointer*/, std::uint32_t /*time*/,
                         std::uint32_t /*axis*/, wl_fixed_t /*value*/) {}
    static void named(void* /*data*/, wl_seat* /*seat*/, const char* /*name*/) {}
};

PanelPointer::PanelPointer(WaylandConnection& connection, wl_compositor& compositor, wl_shm& memory,
                           PanelSurface& panel)
    : connection_(connection),
      compositor_(compositor),
      memory_(memory),
      panel_(panel),
      objects_(std::make_unique<Objects>()) {
    constexpr std::uint32_t version = 3; // later ones add events that are not for us
    static constexpr wl_seat_listener listener{.capabilities = Listeners::capabilities,
                                               .name = Listeners::named};
    objects_->seat.reset(static_cast<wl_seat*>(connection_.bind(wl_seat_interface, version)));
    if (objects_->seat) {
        wl_seat_add_listener(objects_->seat.get(), &listener, this);
    }
}

PanelPointer::~PanelPointer() = default;

/// Without a picture of its own the pointer keeps that of the window that it comes from, such as a text's.
void PanelPointer::showArrow(std::uint32_t serial) {
    if (!objects_->theme) {
        const auto name = qgetenv("XCURSOR_THEME");
        objects_->theme.reset(
            wl_cursor_theme_load(name.isEmpty() ? nullptr : name.constData(), cursorSize(), &memory_));
    }
    auto* arrow = objects_->theme ? wl_cursor_theme_get_cursor(objects_->theme.get(), "left_ptr") : nullptr;
    if (arrow == nullptr || arrow->image_count == 0) {
        return;
    }
    auto* image = arrow->images[0]; // NOLINT: the library's own array
    if (!objects_->cursor) {
        objects_->cursor.reset(wl_compositor_create_surface(&compositor_));
    }
    wl_pointer_set_cursor(objects_->pointer.get(), serial, objects_->cursor.get(),
                          static_cast<std::int32_t>(image->hotspot_x),
                          static_cast<std::int32_t>(image->hotspot_y));
    wl_surface_attach(objects_->cursor.get(), wl_cursor_image_get_buffer(image), 0, 0);
    wl_surface_damage_buffer(objects_->cursor.get(), 0, 0, static_cast<std::int32_t>(image->width),
                             static_cast<std::int32_t>(image->height));
    wl_surface_commit(objects_->cursor.get());
}

} // namespace brenvale
