#include "InputCompositor.h"

#include <linux/input-event-codes.h>
#include <poll.h>
#include <sys/mman.h>
#include <unistd.h>
#include <virtual-keyboard-unstable-v1-server-protocol.h>
#include <wayland-server-protocol.h>
#include <wlr-virtual-pointer-unstable-v1-server-protocol.h>

namespace brenvale {

namespace {

InputCompositor& of(wl_resource* resource) {
    return *static_cast<InputCompositor*>(wl_resource_get_user_data(resource));
}

void destroy(wl_client* /*client*/, wl_resource* resource) {
    wl_resource_destroy(resource);
}

template <typename... Arguments>
void ignore(Arguments... /*arguments*/) {}

/// Makes what a request asks for, answered by `requests`.
template <const wl_interface* interface, auto* requests>
void make(wl_client* client, wl_resource* manager, wl_resource* /*seat*/, std::uint32_t id) {
    auto* resource = wl_resource_create(client, interface, 1, id);
    wl_resource_set_implementation(resource, requests, &of(manager), nullptr);
}

/// Offers a global of version 1, answered by `requests`.
template <const wl_interface* interface, auto* requests>
void offer(wl_display* display, InputCompositor* self) {
    wl_global_create(display, interface, 1, self,
                     [](wl_client* client, void* data, std::uint32_t /*version*/, std::uint32_t id) {
                         auto* resource = wl_resource_create(client, interface, 1, id);
                         wl_resource_set_implementation(resource, requests, data, nullptr);
                     });
}

constexpr struct zwp_virtual_keyboard_v1_interface keyboardRequests{
    .keymap = [](wl_client*, wl_resource* self, std::uint32_t, std::int32_t file,
                 std::uint32_t size) { of(self).keymap(file, size); },
    .key = [](wl_client*, wl_resource* self, std::uint32_t, std::uint32_t code,
              std::uint32_t state) { of(self).key(code, state == WL_KEYBOARD_KEY_STATE_PRESSED); },
    .modifiers = [](wl_client*, wl_resource* self, std::uint32_t depressed, std::uint32_t, std::uint32_t,
                    std::uint32_t) { of(self).modifiers(depressed); },
    .destroy = destroy,
};

constexpr struct zwp_virtual_keyboard_manager_v1_interface keyboardManagerRequests{
    .create_virtual_keyboard = make<&zwp_virtual_keyboard_v1_interface, &keyboardRequests>,
};

constexpr struct zwlr_virtual_pointer_v1_interface pointerRequests{
    .motion = [](wl_client*, wl_resource* self, std::uint32_t, wl_fixed_t dx,
                 wl_fixed_t dy) { of(self).seen().move({wl_fixed_to_double(dx), wl_fixed_to_double(dy)}); },
    .motion_absolute = ignore,
    .button =
        [](wl_client*, wl_resource* self, std::uint32_t, std::uint32_t code, std::uint32_t state) {
            of(self).seen().button(code == BTN_RIGHT, state == WL_POINTER_BUTTON_STATE_PRESSED);
        },
    .axis = ignore,
    .frame = ignore,
    .axis_source = ignore,
    .axis_stop = ignore,
    .axis_discrete = ignore,
    .destroy = destroy,
};

constexpr struct zwlr_virtual_pointer_manager_v1_interface pointerManagerRequests{
    .create_virtual_pointer = make<&zwlr_virtual_pointer_v1_interface, &pointerRequests>,
    .destroy = destroy,
    .create_virtual_pointer_with_output = ignore,
};

constexpr struct wl_seat_interface seatRequests{
    .get_pointer = ignore,
    .get_keyboard = ignore,
    .get_touch = ignore,
    .release = destroy,
};

} // namespace

InputCompositor::InputCompositor() {
    offer<&wl_seat_interface, &seatRequests>(display_, this);
    offer<&zwp_virtual_keyboard_manager_v1_interface, &keyboardManagerRequests>(display_, this);
    offer<&zwlr_virtual_pointer_manager_v1_interface, &pointerManagerRequests>(display_, this);
    thread_ = std::thread([this] { run(); });
}

InputCompositor::~InputCompositor() {
    isEnding_ = true;
    thread_.join();
    wl_display_destroy_clients(display_);
    wl_display_destroy(display_);
}

void InputCompositor::run() {
    constexpr int untilNextLook = 20;
    auto* loop = wl_display_get_event_loop(display_);
    while (!isEnding_) {
        pollfd requests{.fd = wl_event_loop_get_fd(loop), .events = POLLIN, .revents = 0};
        ::poll(&requests, 1, untilNextLook);
        const std::scoped_lock moving(standstill_);
        wl_event_loop_dispatch(loop, 0);
        wl_display_flush_clients(display_);
    }
}

void InputCompositor::keymap(int file, std::uint32_t size) {
    auto* bytes = ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file, 0);
    ::close(file);
    if (bytes != MAP_FAILED) {
        keymap_.reset(xkb_keymap_new_from_string(context_.get(), static_cast<const char*>(bytes),
                                                 XKB_KEYMAP_FORMAT_TEXT_V1, XKB_KEYMAP_COMPILE_NO_FLAGS));
        state_.reset(keymap_ ? xkb_state_new(keymap_.get()) : nullptr);
        ::munmap(bytes, size);
    }
}

void InputCompositor::key(std::uint32_t code, bool isDown) {
    if (state_) {
        seen_.key(xkb_state_key_get_one_sym(state_.get(), code + firstKeycode), isDown,
                  heldModifiers(state_.get()));
    } else {
        seen_.text(QStringLiteral("a key before the keymap"));
    }
}

void InputCompositor::modifiers(std::uint32_t depressed) {
    held_ = depressed;
    if (state_) {
        xkb_state_update_mask(state_.get(), depressed, 0, 0, 0, 0, 0);
    }
}

} // namespace brenvale
