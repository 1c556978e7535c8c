#pragma once

#include <QByteArray>

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <wayland-client-core.h>
#include <wayland-client-protocol.h>

namespace brenvale {

/// Destroys an object of a protocol by the function that the protocol has for it:
/// `std::unique_ptr<wl_seat, WaylandDestroy<wl_seat_destroy>>`. For sources: each has its own copy of that
/// function, so such a type cannot stand in a header.
template <auto destroy>
struct WaylandDestroy {
    template <typename Object>
    void operator()(Object* object) const {
        destroy(object);
    }
};

/// A service that the compositor offers.
struct WaylandGlobal {
    std::uint32_t name = 0; ///< the compositor's number for it, never used twice
    std::string interface;
    std::uint32_t version = 0;
};

/// A connection of our own to the compositor, beside the toolkit's. Belongs to one thread at a time. No call
/// but `wait` ever waits for the compositor, so one that hangs holds up nobody. A connection that has ended,
/// because the compositor went away or refused a request, stays ended: take a new one. Objects made on it are
/// to be destroyed before it, also then.
class WaylandConnection {
public:
    /// Connects to the session's compositor. Null where there is none, or where it takes no connection now.
    [[nodiscard]] static std::unique_ptr<WaylandConnection> open();

    ~WaylandConnection();
    WaylandConnection(const WaylandConnection&) = delete;
    WaylandConnection& operator=(const WaylandConnection&) = delete;

    /// Services that came, or went away; from within `process`. What is bound to one that went answers
    /// nothing any more and is to be destroyed.
    std::function<void(const WaylandGlobal&)> added;
    std::function<void(const WaylandGlobal&)> removed;

    /// Reads and dispatches what has arrived and sends what waits. False once the connection has ended.
    bool process();

    /// Sends what the compositor takes now. False once the connection has ended.
    bool flush();

    /// Whether requests still wait for the compositor to read. While it does, make none that can be left out:
    /// the room for them is small, and the connection ends when it is used up.
    [[nodiscard]] bool hasUnsent() const { return hasUnsent_; }
    [[nodiscard]] bool isAlive() const;

    /// Whether the compositor has named all its services: `globals` is complete.
    [[nodiscard]] bool isReady() const { return isReady_; }
    [[nodiscard]] const std::vector<WaylandGlobal>& globals() const { return globals_; }

    /// The first service of that kind; null where there is none.
    [[nodiscard]] const WaylandGlobal* find(const wl_interface& interface) const;

    /// The first service of that kind in `version`, or in its own if that is older; null where there is none.
    /// The caller owns the object and knows its type: that of `interface`.
    [[nodiscard]] void* bind(const wl_interface& interface, std::uint32_t version);

    /// Calls `completion` from within `process` when the compositor has dealt with all requests so far.
    /// Not at all if the connection ends.
    void sync(std::move_only_function<void()> completion);

    /// For a thread of its own: waits until something has arrived, `wakeUp` is readable (-1: none) or the
    /// time is over, then processes. False once the connection has ended.
    bool wait(std::chrono::milliseconds patience, int wakeUp = -1);

    [[nodiscard]] int descriptor() const { return wl_display_get_fd(display_); }
    [[nodiscard]] wl_display* display() const { return display_; }

private:
    struct Sync;

    explicit WaylandConnection(wl_display* display);

    bool readArrived();
    static void globalAdded(void* data, wl_registry* registry, std::uint32_t name, const char* interface,
                            std::uint32_t version);
    static void globalRemoved(void* data, wl_registry* registry, std::uint32_t name);
    static void synced(void* data, wl_callback* callback, std::uint32_t serial);

    wl_display* display_;
    wl_registry* registry_;
    std::vector<WaylandGlobal> globals_;
    std::vector<std::unique_ptr<Sync>> syncs_; ///< not answered yet
    bool isReady_ = false;
    bool hasUnsent_ = false;
    bool hasEnded_ = false;
};

} // namespace brenvale
