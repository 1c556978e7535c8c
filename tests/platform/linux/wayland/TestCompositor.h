#pragma once

#include <QByteArray>
#include <QTemporaryDir>

#include <functional>
#include <memory>

#include <wayland-server-core.h>
#include <wayland-server-protocol.h>

namespace brenvale {

/// A compositor without a screen, in the thread of the test and stepped by hand. The environment names it
/// while it lives.
class TestCompositor {
public:
    TestCompositor() {
        qputenv("XDG_RUNTIME_DIR", folder_.path().toUtf8());
        qputenv("WAYLAND_DISPLAY", wl_display_add_socket_auto(display_.get()));
    }

    ~TestCompositor() {
        wl_display_destroy_clients(display_.get());
        display_.reset();
        qunsetenv("WAYLAND_DISPLAY");
    }

    TestCompositor(const TestCompositor&) = delete;
    TestCompositor& operator=(const TestCompositor&) = delete;

    /// Deals with what has arrived, and answers it.
    void step() {
        wl_event_loop_dispatch(wl_display_get_event_loop(display_.get()), 0);
        wl_display_flush_clients(display_.get());
    }

    /// Offers a service that answers no request.
    wl_global* offer(const wl_interface& interface, int version) {
        return wl_global_create(display_.get(), &interface, version, this, bound);
    }

    /// Ends the connections of all its clients.
    void dropClients() { wl_display_destroy_clients(display_.get()); }

    /// Tells all its clients that they made a fault, which ends them.
    void refuseClients() {
        wl_client* client = nullptr;
        wl_client_for_each(client, wl_display_get_client_list(display_.get())) {
            wl_client_post_implementation_error(client, "no such thing");
        }
    }

    [[nodiscard]] wl_display* display() const { return display_.get(); }

    int bindings = 0;
    std::uint32_t boundVersion = 0;

private:
    struct Destroy {
        void operator()(wl_display* display) const { wl_display_destroy(display); }
    };

    static void bound(wl_client* client, void* data, std::uint32_t version, std::uint32_t id) {
        auto& self = *static_cast<TestCompositor*>(data);
        ++self.bindings;
        self.boundVersion = version;
        wl_resource_create(client, &wl_seat_interface, static_cast<int>(version), id);
    }

    QTemporaryDir folder_;
    std::unique_ptr<wl_display, Destroy> display_{wl_display_create()};
};

} // namespace brenvale
