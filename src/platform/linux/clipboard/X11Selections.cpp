#include "platform/linux/clipboard/X11Selections.h"

#include "platform/linux/X11Connection.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace brenvale {

namespace {

constexpr std::uint8_t eventKind = 0x7f; // the other bit says that a program sent it
constexpr std::chrono::seconds pauseBetweenLooks{5};

} // namespace

std::unique_ptr<X11Selections> X11Selections::open() {
    auto* connection = connectToX11();
    if (xcb_connection_has_error(connection) != 0) {
        xcb_disconnect(connection);
        return nullptr;
    }
    return std::unique_ptr<X11Selections>(new X11Selections(connection));
}

X11Selections::X11Selections(xcb_connection_t* connection)
    : connection_(connection),
      atoms_(connection),
      server_(connection, atoms_),
      window_(xcb_generate_id(connection)),
      arrival_(xcb_get_file_descriptor(connection), QSocketNotifier::Read) {
    const auto* screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
    const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, window_, screen->root, -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, screen->root_visual, XCB_CW_EVENT_MASK, &mask);
    connect(&arrival_, &QSocketNotifier::activated, this, &X11Selections::serve);
    stalls_.setInterval(pauseBetweenLooks);
    connect(&stalls_, &QTimer::timeout, this, [this] {
        server_.dropStalled();
        serve();
    });
    serve();
}

X11Selections::~X11Selections() {
    readings_.clear(); // before the connection
}

/// The server lets nobody have a selection who asks with a time older than the present owner's. Its time
/// comes with each event, here that of a change of our own window.
xcb_timestamp_t X11Selections::serverTime() {
    constexpr std::uint8_t bitsOfBytes = 8;
    lastTime_ = XCB_CURRENT_TIME;
    xcb_change_property(connection_.get(), XCB_PROP_MODE_APPEND, window_, XCB_ATOM_WM_NAME, XCB_ATOM_STRING,
                        bitsOfBytes, 0, nullptr);
    xcb_flush(connection_.get());
    while (lastTime_ == XCB_CURRENT_TIME) {
        const std::unique_ptr<xcb_generic_event_t, Free> event(xcb_wait_for_event(connection_.get()));
        if (!event) {
            break; // the server is gone
        }
        handle(*event);
    }
    return lastTime_;
}

xcb_window_t X11Selections::ownerOf(xcb_atom_t selection) {
    const std::unique_ptr<xcb_get_selection_owner_reply_t, Free> reply(xcb_get_selection_owner_reply(
        connection_.get(), xcb_get_selection_owner(connection_.get(), selection), nullptr));
    return reply ? reply->owner : xcb_window_t{XCB_WINDOW_NONE};
}

void X11Selections::own(Selection selection, ClipboardContents contents) {
    const auto atom = atoms_.atom(selection);
    const auto time = serverTime();
    const bool isNothing = contents.items.empty();
    xcb_set_selection_owner(connection_.get(), isNothing ? xcb_window_t{XCB_WINDOW_NONE} : window_, atom,
                            time);
    if (!isNothing && ownerOf(atom) == window_) {
        server_.owns(selection, std::move(contents), time);
    } else {
        server_.lost(selection);
    }
    serve();
}

const ClipboardContents* X11Selections::owned(Selection selection) const {
    return isAlive() ? server_.owned(selection) : nullptr;
}

void X11Selections::settle(std::move_only_function<void()> answer) {
    answer(); // `own` has seen to it
}

void X11Selections::readFormats(Selection selection, Formats answer) {
    if (const auto* ours = owned(selection)) {
        answer(ours->formats());
        return;
    }
    ask(atoms_.atom(selection), atoms_.atom("TARGETS"),
        [this, answer = std::move(answer)](const std::optional<QByteArray>& bytes) mutable {
            constexpr std::size_t mostFormats = 256;
            std::vector<xcb_atom_t> targets(
                bytes ? static_cast<std::size_t>(bytes->size()) / sizeof(xcb_atom_t) : 0);
            if (!targets.empty()) {
                std::memcpy(targets.data(), bytes->constData(), targets.size() * sizeof(xcb_atom_t));
            }
            targets.resize(std::min(targets.size(), mostFormats));
            QByteArrayList formats;
            for (const auto target : targets) {
                formats.append(atoms_.name(target));
            }
            formats.removeAll(QByteArray());
            answer(formats);
        });
}

void X11Selections::read(Selection selection, const QByteArray& format, Bytes answer) {
    if (const auto* ours = owned(selection)) {
        const auto* bytes = ours->find(format);
        answer(bytes != nullptr ? std::optional(*bytes) : std::nullopt);
        return;
    }
    ask(atoms_.atom(selection), atoms_.atom(format), std::move(answer));
}

void X11Selections::ask(xcb_atom_t selection, xcb_atom_t target, Bytes answer) {
    if (!isAlive()) {
        answer(std::nullopt);
        return;
    }
    readings_.push_back({.read = std::make_unique<X11SelectionRead>(connection_.get(), atoms_, selection,
                                                                    target, [this] { answerSoon(); }),
                         .answer = std::move(answer)});
    serve();
}

/// Behind the event in which a reading ended: no list changes while it is walked through, and no reading ends
/// in the middle of a call of its own.
void X11Selections::answerSoon() {
    QTimer::singleShot(0, this, [this] { answerFinished(); });
}

void X11Selections::answerFinished() {
    for (;;) {
        const auto place =
            std::ranges::find_if(readings_, [](const auto& each) { return each.read->isFinished(); });
        if (place == readings_.end()) {
            return;
        }
        auto reading = std::move(*place);
        readings_.erase(place);
        reading.answer(reading.read->takeBytes());
    }
}

/// The clipboard manager, where there is one, asks us for the contents now and answers when it has them.
void X11Selections::saveBeforeEnd(std::move_only_function<void()> answer) {
    const auto manager = atoms_.atom("CLIPBOARD_MANAGER");
    if (owned(Selection::clipboard) == nullptr || ownerOf(manager) == XCB_WINDOW_NONE) {
        answer();
        return;
    }
    ask(manager, atoms_.atom("SAVE_TARGETS"),
        [answer = std::move(answer)](const std::optional<QByteArray>& /*bytes*/) mutable { answer(); });
}

/// Sends what waits and deals with all that has arrived, also while answers were waited for.
void X11Selections::serve() {
    for (;;) {
        std::unique_ptr<xcb_generic_event_t, Free> event(xcb_poll_for_event(connection_.get()));
        if (!event) { // sending may read, too, and what it read makes the socket readable no more
            xcb_flush(connection_.get());
            event.reset(xcb_poll_for_queued_event(connection_.get()));
        }
        if (!event) {
            break;
        }
        handle(*event);
    }
    if (!isAlive()) {
        arrival_.setEnabled(false);
        for (const auto& reading : readings_) {
            reading.read->giveUp();
        }
    }
    if (server_.isSending() != stalls_.isActive()) {
        server_.isSending() ? stalls_.start() : stalls_.stop();
    }
}

void X11Selections::handle(const xcb_generic_event_t& event) {
    switch (event.response_type & eventKind) {
    case XCB_SELECTION_REQUEST:
        server_.handle(reinterpret_cast<const xcb_selection_request_event_t&>(event));
        break;
    case XCB_SELECTION_CLEAR:
        handle(reinterpret_cast<const xcb_selection_clear_event_t&>(event));
        break;
    case XCB_PROPERTY_NOTIFY:
        handle(reinterpret_cast<const xcb_property_notify_event_t&>(event));
        break;
    case XCB_DESTROY_NOTIFY:
        server_.handle(reinterpret_cast<const xcb_destroy_notify_event_t&>(event));
        break;
    case XCB_SELECTION_NOTIFY: {
        const auto& answer = reinterpret_cast<const xcb_selection_notify_event_t&>(event);
        for (const auto& reading : readings_) {
            if (reading.read->window() == answer.requestor) {
                reading.read->handle(answer);
            }
        }
        break;
    }
    default:
        break; // an error: a program went away while we answered it
    }
}

void X11Selections::handle(const xcb_selection_clear_event_t& loss) {
    for (const auto selection : {Selection::clipboard, Selection::primary}) {
        // An old loss may arrive when we own it anew.
        if (atoms_.atom(selection) == loss.selection && loss.time >= server_.ownedSince(selection)) {
            server_.lost(selection);
        }
    }
}

void X11Selections::handle(const xcb_property_notify_event_t& change) {
    if (change.window == window_) {
        lastTime_ = change.time;
    }
    server_.handle(change);
    for (const auto& reading : readings_) {
        if (reading.read->window() == change.window) {
            reading.read->handle(change);
        }
    }
}

} // namespace brenvale
