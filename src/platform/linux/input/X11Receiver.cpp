#include "platform/linux/input/X11Receiver.h"

#include "platform/linux/X11Connection.h"
#include "platform/linux/input/XcbReply.h"

#include <QFile>
#include <QSysInfo>

#include <algorithm>
#include <span>

namespace brenvale {

namespace {

using std::chrono::milliseconds;

// Without a ping: how long the process is to have done nothing, and what is waited where that cannot be seen.
constexpr milliseconds restful{30};
constexpr milliseconds blind{150};

QByteArray propertyOf(xcb_connection_t* connection, xcb_window_t window, xcb_atom_t property,
                      xcb_atom_t type) {
    constexpr quint32 longest = 256;
    const auto cookie = xcb_get_property(connection, 0, window, property, type, 0, longest);
    const auto reply = replyOf(xcb_get_property_reply, connection, cookie);
    if (!reply) {
        return {};
    }
    return {static_cast<const char*>(xcb_get_property_value(reply.get())),
            xcb_get_property_value_length(reply.get())};
}

/// What the kernel tells of a process: whether it sleeps, and how long it has run so far.
struct Activity {
    bool isAsleep = false;
    QByteArray runTime;

    friend bool operator==(const Activity&, const Activity&) = default;
};

Activity activityOf(quint32 process) {
    QFile file(QStringLiteral("/proc/%1/stat").arg(process));
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    // The name in brackets may hold anything; behind it come the state and, 11 words on, the two times.
    const auto text = file.readAll();
    const auto words = text.mid(text.lastIndexOf(')') + 2).split(' ');
    constexpr qsizetype userTime = 11;
    constexpr qsizetype systemTime = 12;
    if (words.size() <= systemTime) {
        return {};
    }
    return {.isAsleep = words[0] == "S", .runTime = words[userTime] + ' ' + words[systemTime]};
}

} // namespace

void X11Receiver::find() {
    auto* connection = display_.connection();
    const auto focus = replyOf(xcb_get_input_focus_reply, connection, xcb_get_input_focus(connection));
    const xcb_window_t window = focus ? focus->focus : xcb_window_t{XCB_WINDOW_NONE};
    if (window == focus_) {
        return;
    }
    focus_ = window;
    pinged_ = XCB_WINDOW_NONE;
    process_ = 0;
    constexpr int deepest = 32;
    auto ancestor = window;
    if (ancestor == XCB_INPUT_FOCUS_POINTER_ROOT) {
        return; // whoever is below the pointer
    }
    for (int depth = 0; depth < deepest && ancestor != XCB_WINDOW_NONE && ancestor != display_.root();
         ++depth) {
        if (answersPings(ancestor)) {
            pinged_ = ancestor;
            return;
        }
        process_ = process_ != 0 ? process_ : processOf(ancestor);
        ancestor = parentOf(ancestor);
    }
}

bool X11Receiver::answersPings(xcb_window_t window) const {
    const auto value = propertyOf(display_.connection(), window, display_.protocolsAtom(), XCB_ATOM_ATOM);
    const std::span atoms(reinterpret_cast<const xcb_atom_t*>(value.constData()),
                          static_cast<std::size_t>(value.size()) / sizeof(xcb_atom_t));
    return std::ranges::find(atoms, display_.pingAtom()) != atoms.end();
}

quint32 X11Receiver::processOf(xcb_window_t window) const {
    auto* connection = display_.connection();
    const auto host = propertyOf(connection, window, XCB_ATOM_WM_CLIENT_MACHINE, XCB_GET_PROPERTY_TYPE_ANY);
    const auto value = propertyOf(connection, window, x11Atom(connection, "_NET_WM_PID"), XCB_ATOM_CARDINAL);
    if (value.size() != sizeof(quint32) || QString::fromUtf8(host) != QSysInfo::machineHostName()) {
        return 0;
    }
    return *reinterpret_cast<const quint32*>(value.constData());
}

xcb_window_t X11Receiver::parentOf(xcb_window_t window) const {
    const auto tree =
        replyOf(xcb_query_tree_reply, display_.connection(), xcb_query_tree(display_.connection(), window));
    return tree ? tree->parent : xcb_window_t{XCB_WINDOW_NONE};
}

/// Answers to pings go to the root window, with the one mask or, by Qt, with the other. Its other news are
/// none of ours.
void X11Receiver::watchRoot(bool isOn) const {
    constexpr quint32 answers = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    const quint32 events = isOn ? answers : quint32{XCB_EVENT_MASK_NO_EVENT};
    xcb_change_window_attributes(display_.connection(), display_.root(), XCB_CW_EVENT_MASK, &events);
}

bool X11Receiver::waitUntilRead(milliseconds limit) {
    find();
    if (pinged_ != XCB_WINDOW_NONE) {
        return ping(limit);
    }
    if (process_ != 0) {
        return waitForSleep(limit);
    }
    wait_([] { return false; }, blind);
    return true;
}

bool X11Receiver::ping(milliseconds limit) {
    const auto number = ++pings_;
    xcb_client_message_event_t event{};
    constexpr quint8 wordSize = 32;
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = wordSize;
    event.window = pinged_;
    event.type = display_.protocolsAtom();
    event.data.data32[0] = display_.pingAtom();
    event.data.data32[1] = number;
    event.data.data32[2] = pinged_;
    watchRoot(true);
    xcb_send_event(display_.connection(), 0, pinged_, XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char*>(&event));
    const bool hasAnswered = wait_([this, number] { return display_.lastPong() == number; }, limit);
    watchRoot(false);
    return hasAnswered;
}

bool X11Receiver::waitForSleep(milliseconds limit) {
    auto last = activityOf(process_);
    const auto end = std::chrono::steady_clock::now() + limit;
    while (std::chrono::steady_clock::now() < end) {
        wait_([] { return false; }, restful);
        const auto now = activityOf(process_);
        if (now.runTime.isEmpty() || (now.isAsleep && now == last)) {
            return true;
        }
        last = now;
    }
    return false;
}

} // namespace brenvale
