#include "platform/linux/input/PortalSteps.h"

#include "platform/linux/input/KeyTable.h"

#include <algorithm>
#include <cmath>
#include <ranges>

#include <linux/input-event-codes.h>

namespace brenvale {

namespace {

using std::chrono::milliseconds;

// A program may take its time to ask for what it pastes; until then the text must stay.
constexpr milliseconds pastingTime{250};

// A dialog that was answered keeps the keyboard while it goes away.
constexpr milliseconds afterDialog{700};
constexpr milliseconds afterOpening{150};

PortalNotify keycode(int code, bool isDown) {
    return {.method = QStringLiteral("NotifyKeyboardKeycode"), .values = {code, isDown ? 1U : 0U}};
}

PortalNotify keysym(quint32 keysym, bool isDown) {
    return {.method = QStringLiteral("NotifyKeyboardKeysym"),
            .values = {static_cast<int>(keysym), isDown ? 1U : 0U}};
}

PortalSteps keySteps(const LinuxKey& key, const std::vector<LinuxKey>& modifiers, bool isDown) {
    PortalSteps steps;
    if (isDown) {
        for (const auto& modifier : modifiers) {
            steps.emplace_back(keycode(modifier.evdevCode, true));
        }
    }
    steps.emplace_back(keycode(key.evdevCode, isDown));
    if (!isDown) {
        for (const auto& modifier : modifiers | std::views::reverse) {
            steps.emplace_back(keycode(modifier.evdevCode, false));
        }
    }
    return steps;
}

bool isKey(char32_t character) {
    return character == U'\n' || character == U'\t';
}

PortalSteps textSteps(const QString& text, const std::set<quint32>& keysyms) {
    const auto characters = typedCharacters(text);
    const bool isOfLayout = std::ranges::all_of(characters, [&keysyms](char32_t character) {
        return isKey(character) || keysyms.contains(keysymOf(character));
    });
    if (isOfLayout) {
        return typingSteps(text);
    }
    return {PortalPaste{QString::fromUcs4(characters.data(), static_cast<qsizetype>(characters.size()))}};
}

/// No screen is as wide; what is no number moves nothing.
double withinReach(double distance) {
    constexpr double farthest = 1'000'000;
    return std::isnan(distance) ? 0 : std::clamp(distance, -farthest, farthest);
}

PortalSteps buttonSteps(const PointerButton& button) {
    return {PortalNotify{.method = QStringLiteral("NotifyPointerButton"),
                         .values = {button.isRight ? BTN_RIGHT : BTN_LEFT, button.isDown ? 1U : 0U}}};
}

} // namespace

PortalSteps portalStepsFor(const PostedEvent& event, const std::set<quint32>& keysyms) {
    if (const auto* move = std::get_if<PointerMove>(&event)) {
        return {PortalNotify{.method = QStringLiteral("NotifyPointerMotion"),
                             .values = {withinReach(move->by.x()), withinReach(move->by.y())}}};
    }
    if (const auto* button = std::get_if<PointerButton>(&event)) {
        return buttonSteps(*button);
    }
    if (const auto* system = std::get_if<SystemDefinedEvent>(&event)) {
        const auto half = systemKeyPressOf(*system);
        return half ? PortalSteps{keycode(half->key.evdevCode, half->isDown)} : PortalSteps();
    }
    const auto& key = std::get<KeyEvent>(event);
    if (key.text) {
        return textSteps(*key.text, keysyms);
    }
    const auto place = keyOf(key.keyCode);
    return place ? keySteps(*place, modifierKeysOf(key.flags), key.isDown) : PortalSteps();
}

PortalSteps typingSteps(const QString& text) {
    PortalSteps steps;
    for (const auto character : typedCharacters(text)) {
        for (const bool isDown : {true, false}) {
            if (isKey(character)) {
                steps.emplace_back(keycode(character == U'\n' ? KEY_ENTER : KEY_TAB, isDown));
            } else {
                steps.emplace_back(keysym(keysymOf(character), isDown));
            }
        }
    }
    return steps;
}

PortalSteps pastingSteps() {
    return {keycode(KEY_LEFTSHIFT, true), keycode(KEY_INSERT, true), keycode(KEY_INSERT, false),
            keycode(KEY_LEFTSHIFT, false), PortalPause{pastingTime}};
}

PortalSteps openingSteps(bool followsDialog) {
    return {keycode(KEY_LEFTSHIFT, true), keycode(KEY_LEFTSHIFT, false),
            PortalPause{followsDialog ? afterDialog : afterOpening}};
}

} // namespace brenvale
