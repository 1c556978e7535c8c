#include "platform/linux/input/VirtualInput.h"

#include <algorithm>
#include <chrono>
#include <cmath>

#include <linux/input-event-codes.h>
#include <sys/mman.h>
#include <unistd.h>
#include <virtual-keyboard-unstable-v1-client-protocol.h>
#include <wlr-virtual-pointer-unstable-v1-client-protocol.h>

namespace brenvale {

namespace {

/// A file in memory that holds `text` and a final zero, or -1.
int fileWith(const QByteArray& text) {
    const int file = ::memfd_create("brenvale-keymap", MFD_CLOEXEC);
    const auto size = static_cast<std::size_t>(text.size()) + 1;
    if (file >= 0 && ::write(file, text.constData(), size) != static_cast<ssize_t>(size)) {
        ::close(file);
        return -1;
    }
    return file;
}

/// `value` in the protocol's fixed point; `value` becomes what that leaves over.
wl_fixed_t takeFixed(double& value) {
    constexpr double farthest = 1'000'000;
    constexpr double steps = 256;
    if (!std::isfinite(value)) {
        value = 0;
    }
    const auto fixed = static_cast<wl_fixed_t>(std::trunc(std::clamp(value, -farthest, farthest) * steps));
    value = std::abs(value) > farthest ? 0 : value - (fixed / steps);
    return fixed;
}

} // namespace

void VirtualInput::Destroy::operator()(wl_seat* seat) const {
    wl_seat_destroy(seat);
}

void VirtualInput::Destroy::operator()(zwp_virtual_keyboard_manager_v1* manager) const {
    zwp_virtual_keyboard_manager_v1_destroy(manager);
}

void VirtualInput::Destroy::operator()(zwp_virtual_keyboard_v1* keyboard) const {
    zwp_virtual_keyboard_v1_destroy(keyboard);
}

void VirtualInput::Destroy::operator()(zwlr_virtual_pointer_manager_v1* manager) const {
    zwlr_virtual_pointer_manager_v1_destroy(manager);
}

void VirtualInput::Destroy::operator()(zwlr_virtual_pointer_v1* pointer) const {
    zwlr_virtual_pointer_v1_destroy(pointer);
}

std::unique_ptr<VirtualInput> VirtualInput::open(WaylandConnection& connection) {
    const auto bind = [&connection](const wl_interface& interface) {
        return connection.bind(interface, 1);
    };
    std::unique_ptr<VirtualInput> input(new VirtualInput);
    input->seat_.reset(static_cast<wl_seat*>(bind(wl_seat_interface)));
    input->keyboards_.reset(
        static_cast<zwp_virtual_keyboard_manager_v1*>(bind(zwp_virtual_keyboard_manager_v1_interface)));
    input->pointers_.reset(
        static_cast<zwlr_virtual_pointer_manager_v1*>(bind(zwlr_virtual_pointer_manager_v1_interface)));
    return input->seat_ && input->keyboards_ && input->pointers_ ? std::move(input) : nullptr;
}

quint32 VirtualInput::now() {
    using std::chrono::steady_clock;
    const auto time =
        std::chrono::duration_cast<std::chrono::milliseconds>(steady_clock::now().time_since_epoch());
    return static_cast<quint32>(time.count());
}

void VirtualInput::giveKeymap() {
    const auto text = keymap_.text();
    const int file = fileWith(text);
    if (file < 0) {
        return;
    }
    if (!keyboard_) {
        keyboard_.reset(
            zwp_virtual_keyboard_manager_v1_create_virtual_keyboard(keyboards_.get(), seat_.get()));
    }
    zwp_virtual_keyboard_v1_keymap(keyboard_.get(), WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1, file,
                                   static_cast<quint32>(text.size()) + 1);
    ::close(file); // the library has one of its own
}

void VirtualInput::press(quint16 code, bool isDown) {
    if (keyboard_) {
        zwp_virtual_keyboard_v1_key(keyboard_.get(), now(), code,
                                    isDown ? WL_KEYBOARD_KEY_STATE_PRESSED : WL_KEYBOARD_KEY_STATE_RELEASED);
    }
}

void VirtualInput::key(const LinuxKey& key, quint32 modifiers, bool isDown) {
    if (!keyboard_) {
        return;
    }
    if (isDown) {
        zwp_virtual_keyboard_v1_modifiers(keyboard_.get(), modifiers, 0, 0, 0);
    }
    press(key.evdevCode, isDown);
    if (!isDown) {
        zwp_virtual_keyboard_v1_modifiers(keyboard_.get(), 0, 0, 0, 0);
    }
}

VirtualKeymap::Coverage VirtualInput::prepare(std::u32string_view text) {
    auto coverage = keymap_.cover(text);
    if (coverage.isChanged || !keyboard_) {
        giveKeymap();
        coverage.isChanged = true;
    }
    return coverage;
}

void VirtualInput::type(char32_t character) {
    if (const auto code = keymap_.codeOf(character)) {
        press(*code, true);
        press(*code, false);
    }
}

zwlr_virtual_pointer_v1* VirtualInput::pointer() {
    if (!pointer_) {
        pointer_.reset(zwlr_virtual_pointer_manager_v1_create_virtual_pointer(pointers_.get(), seat_.get()));
    }
    return pointer_.get();
}

void VirtualInput::move(QPointF by) {
    rest_ += by;
    const auto dx = takeFixed(rest_.rx());
    const auto dy = takeFixed(rest_.ry());
    zwlr_virtual_pointer_v1_motion(pointer(), now(), dx, dy);
    zwlr_virtual_pointer_v1_frame(pointer());
}

void VirtualInput::button(bool isRight, bool isDown) {
    zwlr_virtual_pointer_v1_button(pointer(), now(), isRight ? BTN_RIGHT : BTN_LEFT,
                                   isDown ? WL_POINTER_BUTTON_STATE_PRESSED
                                          : WL_POINTER_BUTTON_STATE_RELEASED);
    zwlr_virtual_pointer_v1_frame(pointer());
}

} // namespace brenvale
