#pragma once

#include "platform/linux/input/VirtualKeymap.h"
#include "platform/linux/wayland/WaylandConnection.h"

#include <QPointF>

#include <memory>

struct zwlr_virtual_pointer_manager_v1;
struct zwlr_virtual_pointer_v1;
struct zwp_virtual_keyboard_manager_v1;
struct zwp_virtual_keyboard_v1;

namespace brenvale {

/// A keyboard and a pointer of our own at the compositor's seat (zwp_virtual_keyboard_v1,
/// zwlr_virtual_pointer_v1). Each is made when it is first used, and kept: a new keyboard is a new layout for
/// every client. One thread.
class VirtualInput {
public:
    /// Null where `connection`, which is ready and lives for longer, lacks one of the two.
    [[nodiscard]] static std::unique_ptr<VirtualInput> open(WaylandConnection& connection);

    VirtualInput(const VirtualInput&) = delete;
    VirtualInput& operator=(const VirtualInput&) = delete;
    ~VirtualInput() = default;

    /// A key goes down, with the modifiers that are held on it, or up. The modifiers are said, not pressed.
    void key(const LinuxKey& key, quint32 modifiers, bool isDown);

    /// Makes the characters at the head of `text` typeable: how many, and whether the clients need a moment
    /// before the first of them.
    VirtualKeymap::Coverage prepare(std::u32string_view text);
    void type(char32_t character);

    void move(QPointF by);
    void button(bool isRight, bool isDown);

    /// Whether the keyboard's first keymap has still to be given.
    [[nodiscard]] bool needsKeymap() const { return !keyboard_; }

private:
    VirtualInput() = default;
    void giveKeymap();
    void press(quint16 code, bool isDown);
    [[nodiscard]] zwlr_virtual_pointer_v1* pointer();
    [[nodiscard]] static quint32 now();

    /// Ends each by the protocol's own function.
    struct Destroy {
        void operator()(wl_seat* seat) const;
        void operator()(zwp_virtual_keyboard_manager_v1* manager) const;
        void operator()(zwp_virtual_keyboard_v1* keyboard) const;
        void operator()(zwlr_virtual_pointer_manager_v1* manager) const;
        void operator()(zwlr_virtual_pointer_v1* pointer) const;
    };
    template <typename Object>
    using Owned = std::unique_ptr<Object, Destroy>;

    Owned<wl_seat> seat_;
    Owned<zwp_virtual_keyboard_manager_v1> keyboards_;
    Owned<zwlr_virtual_pointer_manager_v1> pointers_;
    Owned<zwp_virtual_keyboard_v1> keyboard_;
    Owned<zwlr_virtual_pointer_v1> pointer_;
    VirtualKeymap keymap_;
    QPointF rest_; ///< of the moves so far: what is finer than the protocol
};

} // namespace brenvale
