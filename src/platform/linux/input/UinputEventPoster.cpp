#include "platform/linux/input/UinputEventPoster.h"

#include "platform/linux/input/InputConsent.h"
#include "platform/linux/input/KeyTable.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <ranges>
#include <string_view>

#include <linux/input-event-codes.h>
#include <poll.h>

namespace brenvale {

namespace {

// How long a desktop takes to find a new device; nothing tells when it has.
constexpr std::chrono::milliseconds findingTime{700};
constexpr int noTimeout = -1;

// The kernel keeps some 64 events for a program that reads them, and a character is up to 8: what is more is
// lost where the desktop does not keep up.
constexpr std::size_t charactersOfAPiece = 6;
constexpr std::chrono::milliseconds betweenPieces{8};

struct UsRow {
    quint16 firstCode;
    std::u32string_view plain;
    std::u32string_view shifted;
};

constexpr std::array usRows{
    UsRow{KEY_1, U"1234567890-=", U"!@#$%^&*()_+"},
    UsRow{KEY_Q, U"qwertyuiop[]", U"QWERTYUIOP{}"},
    UsRow{KEY_A, U"asdfghjkl;'`", U"ASDFGHJKL:\"~"},
    UsRow{KEY_BACKSLASH, U"\\zxcvbnm,./", U"|ZXCVBNM<>?"},
    UsRow{KEY_SPACE, U" ", U""},
    UsRow{KEY_ENTER, U"\n", U""},
    UsRow{KEY_TAB, U"\t", U""},
};

} // namespace

std::optional<UsKey> usKeyOf(char32_t character) {
    for (const auto& row : usRows) {
        for (const bool isShifted : {false, true}) {
            const auto place = (isShifted ? row.shifted : row.plain).find(character);
            if (place != std::u32string_view::npos) {
                return UsKey{.code = static_cast<quint16>(row.firstCode + place), .isShifted = isShifted};
            }
        }
    }
    return {};
}

UinputEventPoster::UinputEventPoster(std::unique_ptr<KernelInput> kernel, const InputConsent* consent)
    : consent_(consent), kernel_(std::move(kernel)) {
    if (!kernel_->open()) {
        events_.close();
        return;
    }
    kernel_->close(); // until somebody posts, there is no device
    thread_ = std::thread([this] { run(); });
}

UinputEventPoster::~UinputEventPoster() {
    events_.close();
    if (thread_.joinable()) {
        thread_.join();
    }
}

bool UinputEventPoster::canMakeEvents() const {
    return !events_.isClosed() && (consent_ == nullptr || consent_->hasNobodyToAsk());
}

void UinputEventPoster::post(const KeyEvent& event) {
    if (canMakeEvents()) {
        events_.add(event);
    }
}

void UinputEventPoster::post(const SystemDefinedEvent& event) {
    if (canMakeEvents()) {
        events_.add(event);
    }
}

void UinputEventPoster::post(const MouseEvent& event) {
    if (canMakeEvents()) {
        events_.add(pointer_.follow(event));
    }
}

void UinputEventPoster::run() {
    while (!events_.isClosed()) {
        (void)waitForEvents(noTimeout);
        events_.acknowledge();
        while (const auto event = events_.take()) {
            if (!(device_ || makeDevice()) || !perform(*event)) {
                events_.close();
            }
        }
    }
    device_.reset();
}

bool UinputEventPoster::waitForEvents(int milliseconds) const {
    pollfd poll{.fd = events_.descriptor(), .events = POLLIN};
    return ::poll(&poll, 1, milliseconds) > 0;
}

bool UinputEventPoster::makeDevice() {
    device_ = std::make_unique<UinputDevice>(*kernel_);
    if (!device_->create()) {
        return false;
    }
    using std::chrono::steady_clock;
    const auto end = steady_clock::now() + findingTime;
    for (auto now = steady_clock::now(); now < end && !events_.isClosed(); now = steady_clock::now()) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - now);
        (void)waitForEvents(static_cast<int>(left.count()));
        events_.acknowledge();
    }
    return !events_.isClosed();
}

bool UinputEventPoster::perform(const PostedEvent& event) {
    if (const auto* move = std::get_if<PointerMove>(&event)) {
        return device_->move(steps_.step(move->by));
    }
    if (const auto* button = std::get_if<PointerButton>(&event)) {
        return device_->key(button->isRight ? BTN_RIGHT : BTN_LEFT, button->isDown);
    }
    if (const auto* system = std::get_if<SystemDefinedEvent>(&event)) {
        const auto half = systemKeyPressOf(*system);
        return !half || device_->key(half->key.evdevCode, half->isDown);
    }
    return perform(std::get<KeyEvent>(event));
}

bool UinputEventPoster::perform(const KeyEvent& event) {
    if (event.text) {
        return type(typedCharacters(*event.text));
    }
    const auto key = keyOf(event.keyCode);
    if (!key) {
        return true;
    }
    const auto modifiers = modifierKeysOf(event.flags);
    bool isAlive = true;
    if (event.isDown) {
        for (const auto& modifier : modifiers) {
            isAlive = isAlive && device_->key(modifier.evdevCode, true);
        }
    }
    isAlive = isAlive && device_->key(key->evdevCode, event.isDown);
    if (!event.isDown) {
        for (const auto& modifier : modifiers | std::views::reverse) {
            isAlive = isAlive && device_->key(modifier.evdevCode, false);
        }
    }
    return isAlive;
}

bool UinputEventPoster::type(std::u32string_view text) {
    while (!text.empty() && !events_.isClosed()) {
        const auto piece = text.substr(0, charactersOfAPiece);
        text.remove_prefix(piece.size());
        if (!std::ranges::all_of(piece, [this](char32_t character) { return type(character); }) ||
            (!text.empty() && !pause())) {
            return false;
        }
    }
    return true;
}

bool UinputEventPoster::type(char32_t character) {
    const auto key = usKeyOf(character);
    return !key ||
           ((!key->isShifted || device_->key(KEY_LEFTSHIFT, true)) && device_->key(key->code, true) &&
            device_->key(key->code, false) && (!key->isShifted || device_->key(KEY_LEFTSHIFT, false)));
}

/// Lets the desktop read, while the pointer moves on.
bool UinputEventPoster::pause() {
    using std::chrono::steady_clock;
    const auto end = steady_clock::now() + betweenPieces;
    for (;;) {
        events_.acknowledge();
        while (const auto event = events_.takeBeside()) {
            if (!perform(*event)) {
                return false;
            }
        }
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - steady_clock::now());
        if (left.count() <= 0 || events_.isClosed()) {
            return true;
        }
        (void)waitForEvents(static_cast<int>(left.count()));
    }
}

} // namespace brenvale
