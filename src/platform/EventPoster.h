#pragma once

#include <QPointF>
#include <QString>

#include <optional>

namespace brenvale {

/// A key that goes down or up.
struct KeyEvent {
    quint16 keyCode = 0; ///< a virtual key number, such as 123 for the left arrow
    quint64 flags = 0;   ///< the modifiers that are held on this one key, as bits
    bool isDown = false;
    std::optional<QString> text; ///< typed whole, in place of what the key stands for

    friend bool operator==(const KeyEvent&, const KeyEvent&) = default;
};

/// A key of the system's own, such as volume, play or brightness: one half of a press.
struct SystemDefinedEvent {
    quint64 flags = 0;
    qint16 subtype = 0;
    qint64 data1 = 0; ///< the key's number, shifted left by 16 bits, and whether it goes down or up
    qint64 data2 = 0;

    friend bool operator==(const SystemDefinedEvent&, const SystemDefinedEvent&) = default;
};

/// A move of the pointer, or a button of it that goes down or up where the pointer is.
struct MouseEvent {
    enum class Type : quint8 { leftDown = 1, leftUp = 2, rightDown = 3, rightUp = 4, moved = 5 };

    Type type = Type::moved;
    QPointF position;
    quint8 button = 0; ///< 0 left, 1 right

    friend bool operator==(const MouseEvent&, const MouseEvent&) = default;
};

/// Posts keys, text and pointer events to whatever has the focus, as if they came from hardware. Any thread:
/// keys and text come from the link's queue, pointer events from main. No call blocks, however slow the
/// display server or the desktop is. Events that one thread posts reach the desktop in their order. Where
/// the desktop does not let us, events vanish without a word; none is kept for later.
class EventPoster {
public:
    virtual ~EventPoster() = default;

    /// Whether events can be made at this moment. Without that nothing may be posted.
    [[nodiscard]] virtual bool canMakeEvents() const = 0;

    /// Where the next move starts. A desktop that does not tell where the pointer is counts from where its
    /// last move ended; only differences matter, and their fractions are carried.
    [[nodiscard]] virtual QPointF pointerLocation() const = 0;

    virtual void post(const KeyEvent& event) = 0;
    virtual void post(const SystemDefinedEvent& event) = 0;
    virtual void post(const MouseEvent& event) = 0;
};

} // namespace brenvale
