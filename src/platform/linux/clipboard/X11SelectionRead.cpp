#include "platform/linux/clipboard/X11SelectionRead.h"

#include "platform/linux/clipboard/SelectionLimits.h"

#include <cstdlib>
#include <limits>
#include <memory>
#include <utility>

#include <xcb/xcb.h>

namespace brenvale {

namespace {

constexpr auto propertyName = "BRENVALE_SELECTION";

xcb_window_t newWindow(xcb_connection_t* connection) {
    const auto window = xcb_generate_id(connection);
    const auto* screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
    const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, screen->root, -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, screen->root_visual, XCB_CW_EVENT_MASK, &mask);
    return window;
}

} // namespace

X11SelectionRead::X11SelectionRead(xcb_connection_t* connection, X11SelectionAtoms& atoms,
                                   xcb_atom_t selection, xcb_atom_t target,
                                   std::move_only_function<void()> finished)
    : connection_(connection), atoms_(atoms), window_(newWindow(connection)), finished_(std::move(finished)) {
    for (auto* timer : {&patience_, &limit_}) {
        timer->setSingleShot(true);
        connect(timer, &QTimer::timeout, this, [this] { finish(false); });
    }
    patience_.start(patienceForAPiece);
    limit_.start(patienceForAll);
    xcb_convert_selection(connection_, window_, selection, target, atoms_.atom(propertyName),
                          XCB_CURRENT_TIME);
}

X11SelectionRead::~X11SelectionRead() {
    xcb_destroy_window(connection_, window_);
}

void X11SelectionRead::handle(const xcb_selection_notify_event_t& answer) {
    if (answer.property == XCB_ATOM_NONE || !takeProperty()) {
        finish(false);
    } else if (!comesInPieces_) {
        finish(true);
    }
}

void X11SelectionRead::handle(const xcb_property_notify_event_t& change) {
    if (!comesInPieces_ || isFinished_ || change.state != XCB_PROPERTY_NEW_VALUE) {
        return;
    }
    const auto before = bytes_.size();
    if (!takeProperty() || bytes_.size() > mostBytesRead) {
        finish(false);
    } else if (bytes_.size() == before) {
        finish(true);
    } else {
        patience_.start();
    }
}

/// Reading takes the property away, which asks for the next piece.
bool X11SelectionRead::takeProperty() {
    constexpr auto everything = std::numeric_limits<std::int32_t>::max() / 4;
    const auto cookie = xcb_get_property(connection_, 1, window_, atoms_.atom(propertyName),
                                         XCB_GET_PROPERTY_TYPE_ANY, 0, everything);
    const std::unique_ptr<xcb_get_property_reply_t, decltype(&std::free)> reply(
        xcb_get_property_reply(connection_, cookie, nullptr), std::free);
    if (!reply || reply->type == XCB_ATOM_NONE) {
        return false;
    }
    if (!comesInPieces_ && reply->type == atoms_.atom("INCR")) {
        comesInPieces_ = true;
        return true;
    }
    bytes_.append(static_cast<const char*>(xcb_get_property_value(reply.get())),
                  xcb_get_property_value_length(reply.get()));
    return true;
}

void X11SelectionRead::finish(bool isWhole) {
    if (std::exchange(isFinished_, true)) {
        return;
    }
    isWhole_ = isWhole;
    patience_.stop();
    limit_.stop();
    finished_();
}

std::optional<QByteArray> X11SelectionRead::takeBytes() {
    return isWhole_ ? std::optional(std::move(bytes_)) : std::nullopt;
}

} // namespace brenvale
