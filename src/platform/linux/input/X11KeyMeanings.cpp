#include "platform/linux/input/X11KeyMeanings.h"

#include "platform/linux/input/XcbReply.h"
#include "platform/linux/input/XcbXkb.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <span>

namespace brenvale {

namespace {

// Numbers of input devices; below are the master pointer and keyboard of no session.
constexpr quint16 firstDevice = 2;
constexpr quint16 lastDevice = 127;

constexpr std::uint16_t mapPart = XCB_XKB_MAP_PART_KEY_SYMS;

using Head = xcb_xkb_key_sym_map_t;

Head headOf(const QByteArray& key) {
    Head head{};
    std::memcpy(&head, key.constData(), sizeof head);
    return head;
}

/// Whether no level of the key has a keysym.
bool isUnused(const QByteArray& key) {
    return std::all_of(key.begin() + sizeof(Head), key.end(), [](char byte) { return byte == 0; });
}

/// Two equal levels of the type that heeds Shift and Caps Lock: so the key means the same under both.
QByteArray keyThatMeans(quint32 keysym) {
    constexpr quint8 alphabetic = 2; // every server has the first four types
    Head head{};
    if (keysym == 0) {
        return {reinterpret_cast<const char*>(&head), sizeof head};
    }
    const std::array levels{keysym, keysym};
    head.kt_index[0] = alphabetic;
    head.groupInfo = 1;
    head.width = levels.size();
    head.nSyms = levels.size();
    return QByteArray(reinterpret_cast<const char*>(&head), sizeof head) +
           QByteArray(reinterpret_cast<const char*>(levels.data()), sizeof levels);
}

std::vector<QByteArray> keysIn(const xcb_xkb_get_map_reply_t& reply) {
    constexpr std::size_t counted = 32; // bytes of the head that its length does not count
    const auto* bytes = reinterpret_cast<const char*>(&reply);
    const std::size_t end = counted + (reply.length * sizeof(quint32));
    std::vector<QByteArray> keys;
    for (std::size_t place = sizeof reply; keys.size() < reply.nKeySyms && place + sizeof(Head) <= end;) {
        Head head{};
        std::memcpy(&head, bytes + place, sizeof head);
        const auto size = sizeof head + (head.nSyms * sizeof(quint32));
        if (place + size > end) {
            break;
        }
        keys.emplace_back(bytes + place, static_cast<qsizetype>(size));
        place += size;
    }
    return keys;
}

} // namespace

std::vector<X11KeyMeanings::Keyboard> X11KeyMeanings::read(quint8 first, quint8 last) const {
    const auto count = static_cast<quint8>(last - first + 1);
    std::vector<xcb_xkb_get_map_cookie_t> cookies;
    for (auto device = firstDevice; device <= lastDevice; ++device) {
        cookies.push_back(xcb_xkb_get_map(display_.connection(), device, 0, mapPart, 0, 0, first, count, 0, 0,
                                          0, 0, 0, 0, 0, 0, 0, 0, 0));
    }
    std::vector<Keyboard> keyboards;
    for (std::size_t index = 0; index < cookies.size(); ++index) {
        const auto reply = replyOf(xcb_xkb_get_map_reply, display_.connection(), cookies[index]);
        auto keys = reply ? keysIn(*reply) : std::vector<QByteArray>();
        if (keys.size() == count) { // most numbers are no keyboard's
            keyboards.push_back(
                {.device = static_cast<quint16>(firstDevice + index), .keys = std::move(keys)});
        }
    }
    return keyboards;
}

std::vector<quint8> X11KeyMeanings::unused() const {
    const auto* setup = xcb_get_setup(display_.connection());
    const auto keyboards = read(setup->min_keycode, setup->max_keycode);
    std::vector<quint8> keycodes;
    // The very first keycodes stand for no key, and some programs take them for none.
    for (int keycode = setup->max_keycode; keycode >= setup->min_keycode && !keyboards.empty(); --keycode) {
        const auto index = static_cast<std::size_t>(keycode - setup->min_keycode);
        if (std::ranges::all_of(keyboards,
                                [index](const Keyboard& each) { return isUnused(each.keys[index]); })) {
            keycodes.push_back(static_cast<quint8>(keycode));
        }
    }
    return keycodes;
}

void X11KeyMeanings::set(const std::map<quint8, quint32>& meanings) const {
    if (meanings.empty()) {
        return;
    }
    const auto first = meanings.begin()->first;
    const auto last = meanings.rbegin()->first;
    // Nobody may change a layout between the reading and the writing.
    xcb_grab_server(display_.connection());
    for (auto& keyboard : read(first, last)) {
        for (const auto& [keycode, keysym] : meanings) {
            keyboard.keys[static_cast<std::size_t>(keycode - first)] = keyThatMeans(keysym);
        }
        write(keyboard, first);
    }
    xcb_ungrab_server(display_.connection());
    (void)display_.keyboardState(); // now it is done, and reported
}

void X11KeyMeanings::write(const Keyboard& keyboard, quint8 first) const {
    QByteArray keys;
    quint16 levels = 0;
    for (const auto& key : keyboard.keys) {
        keys += key;
        levels = static_cast<quint16>(levels + headOf(key).nSyms);
    }
    const auto* setup = xcb_get_setup(display_.connection());
    xcb_xkb_set_map(display_.connection(), keyboard.device, mapPart, 0, setup->min_keycode,
                    setup->max_keycode, 0, 0, first, static_cast<quint8>(keyboard.keys.size()), levels, 0, 0,
                    0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, keys.constData());
}

} // namespace brenvale
