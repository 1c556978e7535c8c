#pragma once

#include <string_view>

#include <xcb/xproto.h>

namespace brenvale {

/// The toolkit's own connection to the X server; null where it uses another display. On main.
[[nodiscard]] xcb_connection_t* x11Connection();

/// A new connection to the X server of DISPLAY, as xcb_connect gives it; `screen`, where given, becomes the
/// number of its default screen. The library that finds the key of the server serves one thread at a time,
/// hence this. Any thread; waits for the server.
[[nodiscard]] xcb_connection_t* connectToX11(int* screen = nullptr);

/// The server's number for `name`; XCB_ATOM_NONE where the connection is broken.
[[nodiscard]] xcb_atom_t x11Atom(xcb_connection_t* connection, std::string_view name);

} // namespace brenvale
