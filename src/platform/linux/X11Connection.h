#pragma once

struct xcb_connection_t;

namespace brenvale {

/// The toolkit's own connection to the X server; null where it uses another display. On main.
[[nodiscard]] xcb_connection_t* x11Connection();

} // namespace brenvale
