#pragma once

#include <string_view>

#include <xcb/xproto.h>

namespace brenvale {

/// The toolkit's own connection to the X server; null where it uses another display. On main.
[[nodiscard]] xcb_connection_t* x11Connection();

/// The server's number for `name`; XCB_ATOM_NONE where the connection is broken.
[[nodiscard]] xcb_atom_t x11Atom(xcb_connection_t* connection, std::string_view name);

} // namespace brenvale
