#include "platform/linux/input/WaylandEventPoster.h"

#include "platform/linux/input/VirtualInput.h"
#include "platform/linux/wayland/WaylandConnection.h"

#include <algorithm>
#include <memory>

namespace brenvale {

namespace {

constexpr std::chrono::hours untilSomethingComes{24};

// After a new keymap a client loses its first key if that comes at once.
constexpr std::chrono::milliseconds settlingTime{25};

// What a client has not read yet waits in a buffer of the compositor, which ends the client when that is
// full: so a text comes no faster than a client can be expected to read it.
constexpr std::size_t charactersAtOnce = 40;
constexpr std::chrono::milliseconds betweenCharacters{8};

} // namespace

WaylandEventPoster::WaylandEventPoster() : thread_([this] { run(); }) {}

WaylandEventPoster::~WaylandEventPoster() {
    events_.close();
    thread_.join();
}

void WaylandEventPoster::run() {
    const auto connection = WaylandConnection::open();
    while (connection && !connection->isReady() && !events_.isClosed() &&
           connection->wait(untilSomethingComes, events_.descriptor())) {
        events_.acknowledge();
    }
    const auto input = connection && connection->isReady() ? VirtualInput::open(*connection)
                                                           : std::unique_ptr<VirtualInput>();
    connection_ = connection.get();
    input_ = input.get();
    while (input && !events_.isClosed()) {
        events_.acknowledge();
        while (const auto event = events_.take()) {
            perform(*event);
        }
        if (!connection->flush() || !connection->wait(untilSomethingComes, events_.descriptor())) {
            break;
        }
    }
    events_.close();
}

void WaylandEventPoster::perform(const PostedEvent& event) {
    if (!arrive()) {
        return;
    }
    if (const auto* move = std::get_if<PointerMove>(&event)) {
        input_->move(move->by);
    } else if (const auto* button = std::get_if<PointerButton>(&event)) {
        input_->button(button->isRight, button->isDown);
    } else if (const auto* key = std::get_if<KeyEvent>(&event)) {
        perform(*key);
    } else if (const auto half = systemKeyPressOf(std::get<SystemDefinedEvent>(event))) {
        press(half->key, 0, half->isDown);
    }
}

void WaylandEventPoster::perform(const KeyEvent& event) {
    if (event.text) {
        type(typedCharacters(*event.text));
    } else if (const auto key = keyOf(event.keyCode)) {
        press(*key, modifierMaskOf(event.flags), event.isDown);
    }
}

void WaylandEventPoster::press(const LinuxKey& key, quint32 modifiers, bool isDown) {
    if (!input_->needsKeymap() || (input_->prepare({}).isChanged && settle())) {
        input_->key(key, modifiers, isDown);
    }
}

void WaylandEventPoster::type(std::u32string_view text) {
    while (!text.empty()) {
        const auto [length, isChanged] = input_->prepare(text);
        if (isChanged && !settle()) {
            return;
        }
        for (auto rest = text.substr(0, length); !rest.empty();) {
            const auto count = std::min(rest.size(), charactersAtOnce);
            for (const auto character : rest.substr(0, count)) {
                input_->type(character);
            }
            rest.remove_prefix(count);
            if (!rest.empty() && !pass(betweenCharacters)) {
                return;
            }
        }
        text.remove_prefix(length);
    }
}

/// Waits until the compositor has read what was sent. False once there is nobody to post to.
bool WaylandEventPoster::arrive() {
    while (connection_->flush() && connection_->hasUnsent()) {
        if (events_.isClosed() || !connection_->wait(untilSomethingComes, events_.descriptor())) {
            return false;
        }
        events_.acknowledge();
    }
    return connection_->isAlive();
}

/// Waits until the compositor has dealt with all requests, and then for the clients.
bool WaylandEventPoster::settle() {
    const auto isAnswered = std::make_shared<bool>(false);
    connection_->sync([isAnswered] { *isAnswered = true; });
    while (!*isAnswered) {
        if (!arrive() || events_.isClosed() ||
            !connection_->wait(untilSomethingComes, events_.descriptor())) {
            return false;
        }
        events_.acknowledge();
    }
    return pass(settlingTime);
}

/// Lets time pass, in which the pointer moves on.
bool WaylandEventPoster::pass(Milliseconds time) {
    using std::chrono::steady_clock;
    const auto end = steady_clock::now() + time;
    while (arrive() && !events_.isClosed()) {
        events_.acknowledge();
        while (const auto event = events_.takeBeside()) {
            perform(*event);
        }
        const auto left = std::chrono::ceil<Milliseconds>(end - steady_clock::now());
        if (left.count() <= 0) {
            return true;
        }
        if (!connection_->flush() || !connection_->wait(left, events_.descriptor())) {
            return false;
        }
    }
    return false;
}

} // namespace brenvale
