#include "platform/linux/panels/LayerShellSurface.h"

#include "platform/FloatingPanel.h"
#include "platform/linux/panels/PanelPointer.h"
#include "platform/linux/panels/SharedPictures.h"
#include "platform/linux/wayland/WaylandNotifier.h"

#include <QGuiApplication>
#include <QImage>
#include <QScreen>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <cmath>

#include <wlr-layer-shell-unstable-v1-client-protocol.h>

namespace brenvale {

namespace {

constexpr std::chrono::milliseconds pauseBeforeReturn{500};

/// Of the sharpest screen: the compositor makes the picture smaller where it needs to.
int largestScale() {
    double largest = 1;
    for (const auto* screen : QGuiApplication::screens()) {
        largest = std::max(largest, screen->devicePixelRatio());
    }
    return std::min(static_cast<int>(std::ceil(largest)), 4);
}

} // namespace

/// What stands while the panel is on the screen.
struct LayerShellSurface::Session {
    explicit Session(std::unique_ptr<WaylandConnection> connection) : wayland(std::move(connection)) {}

    WaylandNotifier wayland; ///< goes last
    std::unique_ptr<wl_compositor, WaylandDestroy<wl_compositor_destroy>> compositor;
    std::unique_ptr<wl_shm, WaylandDestroy<wl_shm_destroy>> memory;
    std::unique_ptr<zwlr_layer_shell_v1, WaylandDestroy<zwlr_layer_shell_v1_destroy>> shell;
    SharedPictures pictures;
    std::unique_ptr<wl_surface, WaylandDestroy<wl_surface_destroy>> surface;
    std::unique_ptr<zwlr_layer_surface_v1, WaylandDestroy<zwlr_layer_surface_v1_destroy>> layer;
    std::unique_ptr<PanelPointer> pointer;
    int scale = 0; ///< 0 while nothing may be shown yet

    // The distances from the right and the top edge: those that the pointer's positions count from, those
    // that were asked for, and those that the user wants.
    QPoint placed{panelMargin, panelMargin};
    QPoint requested{panelMargin, panelMargin};
    QPoint wanted{panelMargin, panelMargin};
};

/// What the compositor tells us.
struct LayerShellSurface::Listeners {
    static void configured(void* data, zwlr_layer_surface_v1* /*layer*/, std::uint32_t serial,
                           std::uint32_t /*width*/, std::uint32_t /*height*/) {
        static_cast<LayerShellSurface*>(data)->configured(serial);
    }

    static void closed(void* data, zwlr_layer_surface_v1* /*layer*/) {
        static_cast<LayerShellSurface*>(data)->closed();
    }
};

LayerShellSurface::LayerShellSurface() {
    // A screen of another scale has another size in device-independent pixels.
    const auto follow = [this](QScreen* screen) {
        connect(screen, &QScreen::geometryChanged, this, &LayerShellSurface::screensChanged,
                Qt::QueuedConnection);
    };
    for (auto* screen : QGuiApplication::screens()) {
        follow(screen);
    }
    connect(qGuiApp, &QGuiApplication::screenAdded, this, [this, follow](QScreen* screen) {
        follow(screen);
        screensChanged();
    });
    // Not every compositor tells a surface that its screen has gone: sway 1.10 does not.
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, &LayerShellSurface::closed, Qt::QueuedConnection);
}

LayerShellSurface::~LayerShellSurface() = default;

void LayerShellSurface::show() {
    if (session_ != nullptr) {
        return;
    }
    auto connection = WaylandConnection::open();
    if (connection == nullptr) {
        return;
    }
    session_ = std::make_unique<Session>(std::move(connection));
    session_->wayland.ready = [this] {
        bindServices();
    };
    session_->wayland.ended = [this] { // not from within its own call
        QTimer::singleShot(0, &session_->wayland, [this] { hide(); });
    };
}

void LayerShellSurface::hide() {
    session_.reset();
}

void LayerShellSurface::bindServices() {
    auto& connection = session_->wayland.connection();
    session_->compositor.reset(static_cast<wl_compositor*>(connection.bind(wl_compositor_interface, 4)));
    session_->memory.reset(static_cast<wl_shm*>(connection.bind(wl_shm_interface, 1)));
    session_->shell.reset(
        static_cast<zwlr_layer_shell_v1*>(connection.bind(zwlr_layer_shell_v1_interface, 4)));
    if (!session_->compositor || !session_->memory || !session_->shell) {
        return;
    }
    session_->pointer =
        std::make_unique<PanelPointer>(connection, *session_->compositor, *session_->memory, *this);
    makeSurface();
}

void LayerShellSurface::makeSurface() {
    auto& session = *session_;
    session.surface.reset(wl_compositor_create_surface(session.compositor.get()));
    session.layer.reset(zwlr_layer_shell_v1_get_layer_surface(session.shell.get(), session.surface.get(),
                                                              nullptr, ZWLR_LAYER_SHELL_V1_LAYER_OVERLAY,
                                                              "brenvale-call"));
    auto* layer = session.layer.get();
    static constexpr zwlr_layer_surface_v1_listener listener{.configure = Listeners::configured,
                                                             .closed = Listeners::closed};
    zwlr_layer_surface_v1_add_listener(layer, &listener, this);
    zwlr_layer_surface_v1_set_size(layer, panelSize.width(), panelSize.height());
    zwlr_layer_surface_v1_set_anchor(layer,
                                     ZWLR_LAYER_SURFACE_V1_ANCHOR_TOP | ZWLR_LAYER_SURFACE_V1_ANCHOR_RIGHT);
    zwlr_layer_surface_v1_set_keyboard_interactivity(layer,
                                                     ZWLR_LAYER_SURFACE_V1_KEYBOARD_INTERACTIVITY_NONE);
    requestPlace();
}

void LayerShellSurface::configured(std::uint32_t serial) {
    zwlr_layer_surface_v1_ack_configure(session_->layer.get(), serial);
    askForPicture();
    session_->wayland.flush();
}

void LayerShellSurface::screensChanged() {
    if (session_ != nullptr && session_->scale != 0) {
        askForPicture();
    }
}

/// Where the last one is too blurred by now, or sharper than needed.
void LayerShellSurface::askForPicture() {
    const auto scale = largestScale();
    if (scale != session_->scale) {
        session_->scale = scale;
        if (drawWanted) {
            drawWanted(scale);
        }
    }
}

/// A screen has gone; the panel goes on another one.
void LayerShellSurface::closed() {
    if (session_ == nullptr || !session_->layer) {
        return;
    }
    session_->layer.reset();
    session_->surface.reset();
    session_->scale = 0;
    QTimer::singleShot(pauseBeforeReturn, &session_->wayland, [this] {
        session_->placed = session_->requested = session_->wanted = QPoint(panelMargin, panelMargin);
        makeSurface();
    });
    session_->wayland.flush();
}

void LayerShellSurface::present(const QImage& picture) {
    if (session_ == nullptr || session_->scale == 0 || session_->wayland.connection().hasUnsent()) {
        return;
    }
    auto* surface = session_->surface.get();
    auto* buffer = session_->pictures.add(session_->memory.get(), picture);
    if (buffer == nullptr) {
        return;
    }
    wl_surface_set_buffer_scale(surface, session_->scale);
    wl_surface_attach(surface, buffer, 0, 0);
    wl_surface_damage_buffer(surface, 0, 0, picture.width(), picture.height());
    wl_surface_commit(surface);
    session_->wayland.flush();
}

void LayerShellSurface::moveBy(const QPoint& way) {
    if (session_ == nullptr || !session_->layer) {
        return;
    }
    session_->wanted = session_->placed + QPoint(-way.x(), way.y());
    place();
}

/// One request at a time: the pointer's positions count from the old place until the compositor has come to
/// it.
void LayerShellSurface::place() {
    if (session_->placed == session_->requested && session_->wanted != session_->requested) {
        session_->requested = session_->wanted;
        requestPlace();
        session_->wayland.connection().sync([this] {
            session_->placed = session_->requested;
            if (session_->layer) {
                place();
            }
        });
        session_->wayland.flush();
    }
}

void LayerShellSurface::requestPlace() {
    const auto distance = session_->requested;
    zwlr_layer_surface_v1_set_margin(session_->layer.get(), distance.y(), distance.x(), 0, 0);
    wl_surface_commit(session_->surface.get());
    session_->wayland.flush();
}

} // namespace brenvale
