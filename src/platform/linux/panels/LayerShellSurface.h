#pragma once

#include "platform/PanelSurface.h"

#include <QObject>

#include <cstdint>
#include <memory>

namespace brenvale {

/// A panel on the overlay layer of a Wayland compositor (wlr-layer-shell), on a connection of its own that is
/// open while the panel is on the screen. On main.
class LayerShellSurface final : public QObject, public PanelSurface {
public:
    LayerShellSurface();
    ~LayerShellSurface() override;
    LayerShellSurface(const LayerShellSurface&) = delete;
    LayerShellSurface& operator=(const LayerShellSurface&) = delete;

    void show() override;
    void hide() override;
    void present(const QImage& picture) override;
    void moveBy(const QPoint& way) override;

private:
    struct Session;
    struct Listeners;

    void bindServices();
    void makeSurface();
    void configured(std::uint32_t serial);
    void screensChanged();
    void askForPicture();
    void closed();
    void place();
    void requestPlace();

    std::unique_ptr<Session> session_; ///< null while it is not shown
};

} // namespace brenvale
