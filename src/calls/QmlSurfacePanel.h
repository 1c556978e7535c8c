#pragma once

#include "platform/FloatingPanel.h"
#include "platform/PanelSurface.h"

#include <QEvent>
#include <QImage>
#include <QObject>
#include <QPointF>
#include <QTimer>

#include <memory>
#include <optional>

class QQmlEngine;
class QQuickItem;
class QQuickRenderControl;
class QQuickWindow;

namespace brenvale {

/// A call panel that is drawn into memory and shown by a surface of the desktop's. On main.
class QmlSurfacePanel final : public QObject, public FloatingPanel {
    Q_OBJECT

public:
    /// Builds the panel, hidden. `view` is the QML type of its contents, `banner` the state that it shows,
    /// which must outlive the panel.
    QmlSurfacePanel(const QString& view, QObject& banner, std::unique_ptr<PanelSurface> surface);
    ~QmlSurfacePanel() override;
    QmlSurfacePanel(const QmlSurfacePanel&) = delete;
    QmlSurfacePanel& operator=(const QmlSurfacePanel&) = delete;

    void orderFrontRegardless() override;
    void orderOut() override;

    [[nodiscard]] QQuickItem* rootObject() const { return root_.get(); }

private:
    void build(const QString& view, QObject& banner);
    void prepare(int scale);
    void draw();
    void pointerMoved(const QPointF& position);
    void buttonChanged(bool isPressed);
    void pointerLeft();
    void send(QEvent::Type type);

    std::unique_ptr<QQuickRenderControl> control_;
    std::unique_ptr<QQuickWindow> window_; ///< never shown; the scene needs one
    std::unique_ptr<QQmlEngine> engine_;
    std::unique_ptr<QQuickItem> root_;
    std::unique_ptr<PanelSurface> surface_;
    QImage picture_; ///< null while it is not on the screen
    QTimer drawing_;
    QPointF pointer_;
    Qt::MouseButtons buttons_;
    std::optional<QPointF> held_; ///< where the pointer took hold
};

} // namespace brenvale
