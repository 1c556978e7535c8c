#pragma once

#include <QPointF>
#include <QStringList>

#include <condition_variable>
#include <memory>
#include <mutex>

#include <xkbcommon/xkbcommon.h>

namespace brenvale {

/// The keycode of xkb for what the kernel and Wayland call 0.
constexpr xkb_keycode_t firstKeycode = 8;

/// What a program with the focus saw, in the lines of PosterTrial. Any thread.
class SeenInput {
public:
    /// A key by what it stands for: a name of the lines, else a character if it has one. `held` are the
    /// modifiers on it, from `heldModifiers`; with others than Shift a character is none, but "shortcut a
    /// ctrl".
    void key(xkb_keysym_t keysym, bool isDown, const QString& held);
    /// The same of a key that the lines have a name for. False for any other.
    bool namedKey(xkb_keysym_t keysym, bool isDown, const QString& held);
    void text(const QString& text);
    void move(QPointF by);
    void button(bool isRight, bool isDown);

    /// All lines since the beginning.
    [[nodiscard]] QStringList lines();

    /// All lines since the beginning, once the last one is `end`; what there is when ten seconds have brought
    /// nothing new.
    [[nodiscard]] QStringList seenUntil(const QString& end);

    /// A line as it is, of what the others have no words for.
    void add(const QString& line);

private:
    [[nodiscard]] QStringList copyOfLines() const;
    void beginLine();

    std::mutex mutex_;
    std::condition_variable changed_;
    // Guarded by mutex_.
    QStringList lines_;
    QString text_; ///< what the last line holds, and its sum; empty and null while it holds another thing
    QPointF moved_;
};

/// The modifiers that are held, as the lines have them: with a space before, or empty.
[[nodiscard]] QString heldModifiers(xkb_state* state);

template <auto release>
struct ReleaseBy {
    void operator()(auto* object) const { release(object); }
};
using XkbContext = std::unique_ptr<xkb_context, ReleaseBy<xkb_context_unref>>;
using XkbKeymap = std::unique_ptr<xkb_keymap, ReleaseBy<xkb_keymap_unref>>;
using XkbState = std::unique_ptr<xkb_state, ReleaseBy<xkb_state_unref>>;

/// The keyboard of a desktop with the layout "us", by the kernel's numbers of keys. One thread.
class UsKeyboard {
public:
    UsKeyboard();

    struct Press {
        xkb_keysym_t keysym = XKB_KEY_NoSymbol;
        QString held; ///< before the key went down or up
    };
    Press key(quint16 evdevCode, bool isDown);

    /// Whether some key of the layout has the keysym.
    [[nodiscard]] bool has(xkb_keysym_t keysym) const;

    /// The modifiers that are held now.
    [[nodiscard]] QString held() const { return heldModifiers(state_.get()); }

private:
    XkbContext context_;
    XkbKeymap keymap_;
    XkbState state_;
};

} // namespace brenvale
