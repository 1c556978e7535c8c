#pragma once

#include "platform/FloatingPanel.h"

#include <QObject>
#include <QPoint>
#include <QRect>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

class QMouseEvent;
class QQuickView;
class QScreen;
class QWindow;

namespace brenvale {

/// A call panel in a window of its own, for desktops that let a program place its windows. On main.
class QmlCallPanel final : public QObject, public FloatingPanel {
    Q_OBJECT

public:
    /// What the desktop adds to an ordinary window.
    struct Floating {
        /// Makes `window`, which nobody has seen yet, float above everything without ever taking the
        /// keyboard.
        std::function<void(QWindow& window)> prepare;

        /// The part of a screen that bars and docks leave free, in device-independent pixels; by default what
        /// the toolkit takes for it.
        std::function<QRect(const QScreen& screen)> usableArea;

        /// Whether what lies below the window can show through.
        bool isTranslucent = false;
    };

    /// Builds the panel at its place, hidden. `view` is the QML type of its contents, `banner` the state that
    /// it shows, which must outlive the panel.
    QmlCallPanel(const QString& view, QObject& banner, Floating floating);
    ~QmlCallPanel() override;
    QmlCallPanel(const QmlCallPanel&) = delete;
    QmlCallPanel& operator=(const QmlCallPanel&) = delete;

    void orderFrontRegardless() override;
    void orderOut() override;

    [[nodiscard]] QQuickView& view() const { return *view_; }

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// The window and the pointer where the user took hold of the background.
    struct Drag {
        QPoint window;
        QPointF pointer;
    };

    void moveToItsPlace();
    void followScreens();
    void screensChanged();
    void drag(const QMouseEvent& event);

    Floating floating_;
    std::unique_ptr<QQuickView> view_;
    std::optional<Drag> drag_; ///< while a button is held
    bool wasDragged_ = false;  ///< from its place
};

} // namespace brenvale
