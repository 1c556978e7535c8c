#pragma once

#include <QList>
#include <QRect>

class QScreen;

namespace brenvale {

/// What window managers say of the places that bars and docks leave free on X11, in the pixels of the X
/// server.
struct WorkAreas {
    /// One a monitor (`_GTK_WORKAREAS_Dn`, which GNOME, Xfce and others set); empty where there are none.
    QList<QRect> ofMonitors;

    /// The rectangle round all of them (`_NET_WORKAREA`, Extended Window Manager Hints, freedesktop.org);
    /// empty where no manager gives it.
    QRect whole;
};

/// The part of `monitor` that is free, in the same pixels.
[[nodiscard]] QRect usableArea(const QRect& monitor, const WorkAreas& areas);

/// The part of `screen` that bars and docks leave free, in device-independent pixels. With several screens
/// the toolkit's own answer is the whole of each. Asks the X server, which `canFloatWindows` says is there.
/// On main.
[[nodiscard]] QRect usableArea(const QScreen& screen);

} // namespace brenvale
