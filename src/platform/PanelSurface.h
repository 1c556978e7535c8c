#pragma once

#include <QPoint>
#include <QPointF>

#include <functional>

class QImage;

namespace brenvale {

/// The place of a floating panel on a desktop that gives programs no windows to place themselves: a surface
/// of `panelSize`, `panelMargin` from the top and right edges of the usable area, above everything and
/// without the keyboard. It shows pictures that somebody else draws. Positions are in device-independent
/// pixels from its upper left corner. No call blocks. On main.
class PanelSurface {
public:
    /// Takes it off the screen.
    virtual ~PanelSurface() = default;

    /// Asks for a picture with so many pixels to a device-independent one; when it comes on the screen, and
    /// when that changes.
    std::function<void(int scale)> drawWanted;

    /// What the pointer does there: its main button alone counts.
    std::function<void(const QPointF& position)> pointerMoved;
    std::function<void(bool isPressed)> buttonChanged;
    std::function<void()> pointerLeft;

    /// Shows it, above others of its kind.
    virtual void show() = 0;

    /// Takes it off the screen.
    virtual void hide() = 0;

    /// The picture that it shows from now on. Does nothing while it is not on the screen.
    virtual void present(const QImage& picture) = 0;

    /// Moves it so far from where it was when the pointer was last reported.
    virtual void moveBy(const QPoint& way) = 0;
};

} // namespace brenvale
