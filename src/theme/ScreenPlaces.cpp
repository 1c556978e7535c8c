#include "theme/ScreenPlaces.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>

namespace brenvale {

bool isOnAScreen(const QPoint& place) {
    const auto screens = QGuiApplication::screens();
    return std::ranges::any_of(screens,
                               [&place](auto* screen) { return screen->geometry().contains(place); });
}

} // namespace brenvale
