#pragma once

#include "platform/EventPoster.h"

#include <deque>
#include <mutex>
#include <optional>
#include <set>
#include <thread>
#include <variant>

namespace brenvale {

/// The pointer moves, counted from where it is.
struct PointerMove {
    QPointF by;
};

/// A button of the pointer goes down or up.
struct PointerButton {
    bool isRight = false;
    bool isDown = false;
};

using PostedEvent = std::variant<KeyEvent, SystemDefinedEvent, PointerMove, PointerButton>;

/// Events on their way from the threads that post them to the thread that brings them to the desktop. What
/// one thread posted stays in its order; beyond that the pointer goes ahead of keys, since a long text takes
/// its time. Bounded: what does not fit vanishes, but a key that went down also comes up.
class PostedEvents {
public:
    PostedEvents();
    ~PostedEvents();
    PostedEvents(const PostedEvents&) = delete;
    PostedEvents& operator=(const PostedEvents&) = delete;

    /// Any thread. Does not block.
    void add(PostedEvent event);

    /// Any thread. From now on nothing is taken in, and what waits is gone.
    void close();

    [[nodiscard]] bool isClosed() const;

    /// The next event; the one before counts as done. None if there is none. On the thread that takes.
    [[nodiscard]] std::optional<PostedEvent> take();

    /// The next pointer event that needs not wait for the event in hand. On the thread that takes.
    [[nodiscard]] std::optional<PostedEvent> takeBeside();

    /// The text that follows the one in hand and can be typed with it: its poster posted nothing in between.
    /// None if there is none. On the thread that takes.
    [[nodiscard]] std::optional<QString> takeTextBehind();

    /// Readable when something came since `acknowledge`.
    [[nodiscard]] int descriptor() const { return descriptor_; }
    void acknowledge() const;

private:
    struct Entry {
        quint64 number = 0;
        std::thread::id poster;
        PostedEvent event;
    };
    using Lane = std::deque<Entry>;

    [[nodiscard]] bool fits(const PostedEvent& event);
    [[nodiscard]] static bool fits(std::multiset<quint16>& down, quint16 key, bool isDown, bool isFull);
    [[nodiscard]] static bool waitsForAny(const Entry& entry, const Lane& lane);
    [[nodiscard]] static PostedEvent takeFront(Lane& lane);
    void wake() const;

    int descriptor_ = -1; ///< constant after construction
    mutable std::mutex mutex_;
    // Guarded by mutex_.
    Lane keys_;
    Lane pointer_;
    std::optional<std::thread::id> inHand_; ///< who posted the key or text that is under way
    std::multiset<quint16> down_;           ///< keys whose press was taken in and whose release was not
    std::multiset<quint16> systemDown_;     ///< system keys likewise
    qsizetype textLength_ = 0;
    quint64 count_ = 0;
    bool isClosed_ = false;
};

} // namespace brenvale
