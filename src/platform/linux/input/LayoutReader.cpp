#include "platform/linux/input/LayoutReader.h"

#include "platform/linux/input/LayoutKeysyms.h"

#include <sys/mman.h>
#include <unistd.h>

namespace brenvale {

namespace {

constexpr std::uint32_t largestKeymap = 4 << 20;

template <typename... Arguments>
void ignore(Arguments... /*arguments*/) {}

} // namespace

LayoutReader::LayoutReader(std::chrono::milliseconds settlingTime) : settlingTime_(settlingTime) {
    auto connection = WaylandConnection::open();
    if (connection) {
        wayland_ = std::make_unique<WaylandNotifier>(std::move(connection));
        wayland_->ready = [this] {
            follow();
        };
    }
}

LayoutReader::~LayoutReader() {
    if (keyboard_ != nullptr) {
        wl_keyboard_destroy(keyboard_);
    }
    if (seat_ != nullptr) {
        wl_seat_destroy(seat_);
    }
}

const std::set<quint32>& LayoutReader::keysyms() const {
    static const std::set<quint32> none;
    return settled_.hasExpired() ? keysyms_ : none;
}

void LayoutReader::follow() {
    static constexpr wl_seat_listener listener{.capabilities = capabilities, .name = ignore};
    seat_ = static_cast<wl_seat*>(wayland_->connection().bind(wl_seat_interface, 1));
    if (seat_ != nullptr) {
        wl_seat_add_listener(seat_, &listener, this);
        wayland_->flush();
    }
}

void LayoutReader::capabilities(void* data, wl_seat* seat, std::uint32_t capabilities) {
    static constexpr wl_keyboard_listener listener{.keymap = keymap,
                                                   .enter = ignore,
                                                   .leave = ignore,
                                                   .key = ignore,
                                                   .modifiers = ignore,
                                                   .repeat_info = ignore};
    auto& self = *static_cast<LayoutReader*>(data);
    const bool hasKeyboard = (capabilities & WL_SEAT_CAPABILITY_KEYBOARD) != 0;
    if (hasKeyboard && self.keyboard_ == nullptr) {
        self.keyboard_ = wl_seat_get_keyboard(seat);
        wl_keyboard_add_listener(self.keyboard_, &listener, data);
        self.wayland_->flush();
    } else if (!hasKeyboard && self.keyboard_ != nullptr) {
        wl_keyboard_destroy(std::exchange(self.keyboard_, nullptr));
        self.keysyms_.clear();
    }
}

void LayoutReader::keymap(void* data, wl_keyboard* /*keyboard*/, std::uint32_t format, int file,
                          std::uint32_t size) {
    static_cast<LayoutReader*>(data)->read(format, file, size);
    ::close(file);
}

void LayoutReader::read(std::uint32_t format, int file, std::uint32_t size) {
    keysyms_.clear();
    if (std::exchange(hasKeymap_, true)) {
        settled_.setRemainingTime(settlingTime_);
    }
    if (format != WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1 || size == 0 || size > largestKeymap) {
        return;
    }
    auto* bytes = ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file, 0);
    if (bytes != MAP_FAILED) {
        const QByteArray text(static_cast<const char*>(bytes),
                              static_cast<qsizetype>(qstrnlen(static_cast<const char*>(bytes), size)));
        ::munmap(bytes, size);
        keysyms_ = keysymsOfEveryLayout(text);
    }
}

} // namespace brenvale
