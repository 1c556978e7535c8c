#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

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

/// The numbers of a window's property of type CARDINAL, `most` at the most; none where it is not set. Waits
/// for the server.
[[nodiscard]] std::vector<std::uint32_t> x11Cardinals(xcb_connection_t* connection, xcb_window_t window,
                                                      xcb_atom_t property, std::uint32_t most);

} // namespace brenvale
