#pragma once

#include <QByteArray>
#include <QImage>

#include <functional>

class QPainter;
class QRectF;

namespace brenvale {

/// Whether the drawing of an icon has colours by name, as those of Breeze have: it may have a second one, and
/// white.
[[nodiscard]] bool hasSeveralColours(const QByteArray& svg);

/// The shape of such a drawing, `side` wide and high: a second colour is cut out of the first where it lies
/// on that, and drawn where it stands alone; what is white is cut out of both. `draw` draws a picture.
[[nodiscard]] QImage maskOfSeveralColours(
    const QByteArray& svg, int side,
    const std::function<void(QPainter& painter, const QByteArray& svg, const QRectF& area)>& draw);

} // namespace brenvale
