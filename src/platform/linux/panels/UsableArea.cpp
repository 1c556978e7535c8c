#include "platform/linux/panels/UsableArea.h"

#include "platform/linux/X11Connection.h"

#include <QScreen>

#include <string>

#include <xcb/xcb.h>

namespace brenvale {

namespace {

/// The numbers of a property of the root window; none where it is not set.
QList<int> rootNumbers(xcb_connection_t* connection, const std::string& property) {
    constexpr std::uint32_t most = 1024;
    const auto root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    const auto numbers = x11Cardinals(connection, root, x11Atom(connection, property), most);
    return {numbers.begin(), numbers.end()};
}

QList<QRect> rectangles(const QList<int>& numbers) {
    QList<QRect> all;
    for (qsizetype i = 0; i + 4 <= numbers.size(); i += 4) {
        all.append(QRect(numbers[i], numbers[i + 1], numbers[i + 2], numbers[i + 3]));
    }
    return all;
}

WorkAreas currentWorkAreas(xcb_connection_t* connection) {
    const auto desktop = rootNumbers(connection, "_NET_CURRENT_DESKTOP").value(0);
    return {.ofMonitors = rectangles(rootNumbers(connection, "_GTK_WORKAREAS_D" + std::to_string(desktop))),
            .whole = rectangles(rootNumbers(connection, "_NET_WORKAREA")).value(desktop)};
}

} // namespace

QRect usableArea(const QRect& monitor, const WorkAreas& areas) {
    for (const auto& area : areas.ofMonitors) {
        if (const auto common = area & monitor; !common.isEmpty()) {
            return common;
        }
    }
    const auto common = areas.whole & monitor;
    return common.isEmpty() ? monitor : common;
}

QRect usableArea(const QScreen& screen) {
    // The toolkit scales all of a screen but the place of its corner.
    const auto shown = screen.geometry();
    const auto scale = screen.devicePixelRatio();
    const QRect monitor(shown.topLeft(), (QSizeF(shown.size()) * scale).toSize());
    const auto free = usableArea(monitor, currentWorkAreas(x11Connection()));
    const auto offset = QPointF(free.topLeft() - monitor.topLeft()) / scale;
    return {shown.topLeft() + offset.toPoint(), (QSizeF(free.size()) / scale).toSize()};
}

} // namespace brenvale
