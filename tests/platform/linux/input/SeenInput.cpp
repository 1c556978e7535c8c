#include "SeenInput.h"

#include <QHash>

#include <algorithm>
#include <chrono>
#include <iterator>
#include <span>
#include <utility>

#include <xkbcommon/xkbcommon-keysyms.h>

namespace brenvale {

namespace {

QString nameOf(xkb_keysym_t keysym) {
    static const QHash<xkb_keysym_t, QString> names{
        {XKB_KEY_Escape, QStringLiteral("Escape")},
        {XKB_KEY_Return, QStringLiteral("Return")},
        {XKB_KEY_BackSpace, QStringLiteral("Delete")},
        {XKB_KEY_Left, QStringLiteral("Left")},
        {XKB_KEY_Right, QStringLiteral("Right")},
        {XKB_KEY_Up, QStringLiteral("Up")},
        {XKB_KEY_Down, QStringLiteral("Down")},
        {XKB_KEY_Control_L, QStringLiteral("Control")},
        {XKB_KEY_Alt_L, QStringLiteral("Option")},
        {XKB_KEY_Super_L, QStringLiteral("Command")},
        {XKB_KEY_XF86AudioRaiseVolume, QStringLiteral("system0")},
        {XKB_KEY_XF86AudioLowerVolume, QStringLiteral("system1")},
        {XKB_KEY_XF86MonBrightnessUp, QStringLiteral("system2")},
        {XKB_KEY_XF86MonBrightnessDown, QStringLiteral("system3")},
        {XKB_KEY_XF86AudioMute, QStringLiteral("system7")},
        {XKB_KEY_XF86AudioPlay, QStringLiteral("system16")},
        {XKB_KEY_XF86AudioNext, QStringLiteral("system17")},
        {XKB_KEY_XF86AudioPrev, QStringLiteral("system18")},
        {XKB_KEY_XF86KbdBrightnessUp, QStringLiteral("system21")},
        {XKB_KEY_XF86KbdBrightnessDown, QStringLiteral("system22")},
    };
    return names.value(keysym);
}

bool isModifier(xkb_keysym_t keysym) {
    return keysym == XKB_KEY_Control_L || keysym == XKB_KEY_Alt_L || keysym == XKB_KEY_Super_L;
}

} // namespace

bool SeenInput::namedKey(xkb_keysym_t keysym, bool isDown, const QString& held) {
    const auto name = nameOf(keysym);
    if (!name.isEmpty()) {
        add((isDown ? QStringLiteral("down ") : QStringLiteral("up ")) + name +
            (isModifier(keysym) ? QString() : held));
    }
    return !name.isEmpty();
}

void SeenInput::key(xkb_keysym_t keysym, bool isDown, const QString& held) {
    if (namedKey(keysym, isDown, held)) {
        return;
    }
    if (const char32_t character = xkb_keysym_to_utf32(keysym); isDown && character != 0) {
        const auto typed = QString::fromUcs4(&character, 1);
        held.isEmpty() || held == u" shift" ? text(typed) : add(QStringLiteral("shortcut ") + typed + held);
    }
}

void SeenInput::text(const QString& text) {
    const std::scoped_lock lock(mutex_);
    if (text_.isEmpty()) {
        beginLine();
        lines_ << QString();
    }
    text_ += text;
    lines_.last() = QStringLiteral("text ") + text_;
    changed_.notify_all();
}

void SeenInput::move(QPointF by) {
    if (by.isNull()) {
        return;
    }
    const std::scoped_lock lock(mutex_);
    if (moved_.isNull()) {
        beginLine();
    } else {
        lines_.removeLast();
    }
    moved_ += by;
    if (!moved_.isNull()) {
        lines_ << QStringLiteral("by %1 %2").arg(moved_.x(), 0, 'g', 12).arg(moved_.y(), 0, 'g', 12);
    }
    changed_.notify_all();
}

void SeenInput::button(bool isRight, bool isDown) {
    add((isDown ? QStringLiteral("press ") : QStringLiteral("release ")) +
        (isRight ? QStringLiteral("right") : QStringLiteral("left")));
}

QStringList SeenInput::lines() {
    const std::scoped_lock lock(mutex_);
    return copyOfLines();
}

QStringList SeenInput::seenUntil(const QString& end) {
    constexpr std::chrono::seconds patience{10};
    std::unique_lock lock(mutex_);
    while (lines_.isEmpty() || lines_.last() != end) {
        if (changed_.wait_for(lock, patience) == std::cv_status::timeout) {
            break;
        }
    }
    return copyOfLines();
}

void SeenInput::add(const QString& line) {
    const std::scoped_lock lock(mutex_);
    beginLine();
    lines_ << line;
    changed_.notify_all();
}

/// With nothing that the two share: Qt lets go of that unseen by the thread sanitizer.
QStringList SeenInput::copyOfLines() const {
    QStringList lines;
    std::ranges::transform(lines_, std::back_inserter(lines),
                           [](const QString& line) { return QString(line.constData(), line.size()); });
    return lines;
}

void SeenInput::beginLine() {
    text_.clear();
    moved_ = {};
}

QString heldModifiers(xkb_state* state) {
    QStringList names;
    for (const auto& [modifier, name] :
         {std::pair{XKB_MOD_NAME_LOGO, "cmd"}, std::pair{XKB_MOD_NAME_CTRL, "ctrl"},
          std::pair{XKB_MOD_NAME_ALT, "option"}, std::pair{XKB_MOD_NAME_SHIFT, "shift"}}) {
        if (xkb_state_mod_name_is_active(state, modifier, XKB_STATE_MODS_EFFECTIVE) == 1) {
            names << QString::fromLatin1(name);
        }
    }
    return names.isEmpty() ? QString() : u' ' + names.join(u'+');
}

UsKeyboard::UsKeyboard() : context_(xkb_context_new(XKB_CONTEXT_NO_ENVIRONMENT_NAMES)) {
    constexpr xkb_rule_names names{
        .rules = "evdev", .model = "pc105", .layout = "us", .variant = "", .options = ""};
    keymap_.reset(xkb_keymap_new_from_names(context_.get(), &names, XKB_KEYMAP_COMPILE_NO_FLAGS));
    state_.reset(xkb_state_new(keymap_.get()));
}

UsKeyboard::Press UsKeyboard::key(quint16 evdevCode, bool isDown) {
    const xkb_keycode_t code = evdevCode + firstKeycode;
    Press press{.keysym = xkb_state_key_get_one_sym(state_.get(), code), .held = held()};
    xkb_state_update_key(state_.get(), code, isDown ? XKB_KEY_DOWN : XKB_KEY_UP);
    return press;
}

bool UsKeyboard::has(xkb_keysym_t keysym) const {
    for (auto code = xkb_keymap_min_keycode(keymap_.get()); code <= xkb_keymap_max_keycode(keymap_.get());
         ++code) {
        const auto levels = xkb_keymap_num_levels_for_key(keymap_.get(), code, 0);
        for (xkb_level_index_t level = 0; level < levels; ++level) {
            const xkb_keysym_t* keysyms = nullptr;
            const auto count = xkb_keymap_key_get_syms_by_level(keymap_.get(), code, 0, level, &keysyms);
            if (std::ranges::count(std::span(keysyms, static_cast<std::size_t>(count)), keysym) != 0) {
                return true;
            }
        }
    }
    return false;
}

} // namespace brenvale
