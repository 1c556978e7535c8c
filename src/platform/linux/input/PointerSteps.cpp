#include "platform/linux/input/PointerSteps.h"

#include <algorithm>
#include <cmath>

namespace brenvale {

namespace {

constexpr double farthest = 32'000; // what a protocol's 16 bits hold; screens end before

/// The whole part of `value`, whose fraction stays in it.
int takeWhole(double& value) {
    if (!std::isfinite(value)) {
        value = 0;
    }
    // Ten moves by a tenth are one pixel, though their sum falls a little short of it.
    constexpr double error = 1e-6;
    const double whole = std::trunc(value + std::copysign(error, value));
    value -= whole;
    return static_cast<int>(std::clamp(whole, -farthest, farthest));
}

} // namespace

QPoint PointerSteps::step(QPointF by) {
    rest_ += by;
    const int horizontal = takeWhole(rest_.rx());
    const int vertical = takeWhole(rest_.ry());
    return {horizontal, vertical};
}

} // namespace brenvale
