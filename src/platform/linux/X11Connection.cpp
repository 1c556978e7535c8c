#include "platform/linux/X11Connection.h"

#include <QGuiApplication>

namespace brenvale {

xcb_connection_t* x11Connection() {
    // The platform without a display says that it has the interface too.
    if (QGuiApplication::platformName() != u"xcb") {
        return nullptr;
    }
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 != nullptr ? x11->connection() : nullptr;
}

} // namespace brenvale
