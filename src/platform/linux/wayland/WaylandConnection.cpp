#include "platform/linux/wayland/WaylandConnection.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdarg>
#include <cstring>
#include <utility>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace brenvale {

namespace {

void discard(const char* /*format*/, va_list /*arguments*/) {}

/// Where the compositor listens; empty where the session names none.
QByteArray socketPath() {
    auto name = qgetenv("WAYLAND_DISPLAY");
    if (name.startsWith('/')) {
        return name;
    }
    const auto folder = qgetenv("XDG_RUNTIME_DIR");
    if (!folder.startsWith('/') || (name.isEmpty() && qgetenv("XDG_SESSION_TYPE") != "wayland")) {
        return {};
    }
    return folder + '/' + (name.isEmpty() ? QByteArray("wayland-0") : name);
}

/// A connected socket, or -1. The library's own way to connect waits for a compositor that hangs.
int connectedSocket(const QByteArray& path) {
    sockaddr_un address{.sun_family = AF_UNIX, .sun_path = {}};
    if (path.isEmpty() || static_cast<std::size_t>(path.size()) >= sizeof address.sun_path) {
        return -1;
    }
    std::memcpy(static_cast<char*>(address.sun_path), path.constData(),
                static_cast<std::size_t>(path.size()));
    const int descriptor = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (descriptor >= 0 &&
        ::connect(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        ::close(descriptor);
        return -1;
    }
    return descriptor;
}

bool isReadable(int descriptor) {
    pollfd poll{.fd = descriptor, .events = POLLIN};
    return ::poll(&poll, 1, 0) > 0;
}

} // namespace

/// A question to the compositor, answered when it has come to it.
struct WaylandConnection::Sync {
    WaylandConnection* connection = nullptr;
    std::unique_ptr<wl_callback, WaylandDestroy<wl_callback_destroy>> callback;
    std::move_only_function<void()> completion;
};

std::unique_ptr<WaylandConnection> WaylandConnection::open() {
    const int descriptor = connectedSocket(socketPath());
    if (descriptor < 0) {
        return nullptr;
    }
    wl_log_set_handler_client(discard);                   // the library's complaints are no part of our log
    auto* display = wl_display_connect_to_fd(descriptor); // closes the descriptor where it fails
    return display != nullptr ? std::unique_ptr<WaylandConnection>(new WaylandConnection(display)) : nullptr;
}

WaylandConnection::WaylandConnection(wl_display* display)
    : display_(display), registry_(wl_display_get_registry(display)) {
    static constexpr wl_registry_listener listener{.global = globalAdded, .global_remove = globalRemoved};
    wl_registry_add_listener(registry_, &listener, this);
    sync([this] { isReady_ = true; });
    flush();
}

WaylandConnection::~WaylandConnection() {
    syncs_.clear();
    wl_registry_destroy(registry_);
    wl_display_disconnect(display_);
}

bool WaylandConnection::isAlive() const {
    return !hasEnded_ && wl_display_get_error(display_) == 0;
}

bool WaylandConnection::process() {
    if (!isAlive() || !readArrived() || wl_display_dispatch_pending(display_) < 0) {
        hasEnded_ = true;
        return false;
    }
    return flush();
}

/// Takes what has arrived off the socket without waiting for more.
bool WaylandConnection::readArrived() {
    while (wl_display_prepare_read(display_) != 0) {
        if (wl_display_dispatch_pending(display_) < 0) {
            return false;
        }
    }
    if (!isReadable(descriptor())) {
        wl_display_cancel_read(display_);
        return true;
    }
    return wl_display_read_events(display_) == 0;
}

bool WaylandConnection::flush() {
    if (!isAlive()) {
        hasEnded_ = true;
        return false;
    }
    hasUnsent_ = false;
    // The error of a compositor that has just closed its end can still be read: the next reading finds it.
    if (wl_display_flush(display_) < 0 && errno != EPIPE) {
        hasUnsent_ = errno == EAGAIN;
        hasEnded_ = !hasUnsent_;
    }
    return !hasEnded_;
}

bool WaylandConnection::wait(std::chrono::milliseconds patience, int wakeUp) {
    const short events = hasUnsent_ ? POLLIN | POLLOUT : POLLIN;
    std::array polls{pollfd{.fd = descriptor(), .events = events}, pollfd{.fd = wakeUp, .events = POLLIN}};
    (void)::poll(polls.data(), polls.size(), static_cast<int>(patience.count()));
    return process();
}

const WaylandGlobal* WaylandConnection::find(const wl_interface& interface) const {
    const auto global = std::ranges::find(globals_, std::string(interface.name), &WaylandGlobal::interface);
    return global != globals_.end() ? &*global : nullptr;
}

void* WaylandConnection::bind(const wl_interface& interface, std::uint32_t version) {
    const auto* global = find(interface);
    return global != nullptr
               ? wl_registry_bind(registry_, global->name, &interface, std::min(version, global->version))
               : nullptr;
}

void WaylandConnection::sync(std::move_only_function<void()> completion) {
    auto& sync = syncs_.emplace_back(std::make_unique<Sync>());
    sync->connection = this;
    sync->callback.reset(wl_display_sync(display_));
    sync->completion = std::move(completion);
    static constexpr wl_callback_listener listener{.done = synced};
    if (sync->callback) {
        wl_callback_add_listener(sync->callback.get(), &listener, sync.get());
    }
}

void WaylandConnection::globalAdded(void* data, wl_registry* /*registry*/, std::uint32_t name,
                                    const char* interface, std::uint32_t version) {
    auto& self = *static_cast<WaylandConnection*>(data);
    const WaylandGlobal global{.name = name, .interface = interface, .version = version};
    self.globals_.push_back(global);
    if (self.added) {
        self.added(global);
    }
}

void WaylandConnection::globalRemoved(void* data, wl_registry* /*registry*/, std::uint32_t name) {
    auto& self = *static_cast<WaylandConnection*>(data);
    const auto place = std::ranges::find(self.globals_, name, &WaylandGlobal::name);
    if (place == self.globals_.end()) {
        return;
    }
    const auto global = std::move(*place);
    self.globals_.erase(place);
    if (self.removed) {
        self.removed(global);
    }
}

void WaylandConnection::synced(void* data, wl_callback* /*callback*/, std::uint32_t /*serial*/) {
    auto* sync = static_cast<Sync*>(data);
    auto& syncs = sync->connection->syncs_;
    const auto place = std::ranges::find(syncs, sync, &std::unique_ptr<Sync>::get);
    const auto answered = std::move(*place); // lives until its completion has run
    syncs.erase(place);
    answered->completion();
}

} // namespace brenvale
