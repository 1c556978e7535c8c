#pragma once

#include <string_view>

namespace brenvale {

/// Whether a handshake comes from a web page of another site: its `origin` (RFC 6454, the header's value) is
/// "null", or an http or https origin whose host is neither that of the `host` header (RFC 9110) nor a
/// loopback name. The phone's app sends no origin at all. Pure.
[[nodiscard]] bool isForeignWebOrigin(std::string_view origin, std::string_view host);

} // namespace brenvale
