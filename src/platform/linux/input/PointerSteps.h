#pragma once

#include <QPoint>
#include <QPointF>

namespace brenvale {

/// Turns moves with fractions into moves by whole pixels: what is left over goes into the next one. One
/// thread.
class PointerSteps {
public:
    /// The whole pixels of all moves so far that no earlier step covered, but no farther than any screen
    /// goes.
    [[nodiscard]] QPoint step(QPointF by);

private:
    QPointF rest_;
};

} // namespace brenvale
