#pragma once

#include <string>
#include <string_view>

namespace brenvale {

/// Whether a handshake comes from a web page that has no business here. Its `origin` (RFC 6454, the header's
/// value) is "null"; or it is an http or https origin, and
/// - its host is neither that of the `host` header (RFC 9110) nor a loopback name, or
/// - the host that it asked for is no address, no loopback name and not this computer's `ownName`, with or
/// without
///   ".local": a page can make any other name point here, and then its origin and its host agree.
/// The phone's app sends no origin at all. Pure.
[[nodiscard]] bool isForeignWebOrigin(std::string_view origin, std::string_view host,
                                      std::string_view ownName);

/// The head of an HTTP `answer` without the field "Server", which the protocol stack adds; bytes behind the
/// head stay as they are. Pure.
[[nodiscard]] std::string withoutServerField(std::string answer);

} // namespace brenvale
