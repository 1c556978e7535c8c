#include "link/Handshake.h"

#include <boost/asio/ip/address.hpp>
#include <boost/beast/core/string.hpp>

#include <algorithm>
#include <string>

namespace brenvale {

namespace {

using boost::beast::iequals;

bool startsWith(std::string_view text, std::string_view head) {
    return text.size() >= head.size() && iequals(text.substr(0, head.size()), head);
}

/// The host of "host", "host:port" or "[address]:port", without brackets.
std::string_view hostPart(std::string_view authority) {
    if (authority.starts_with('[')) {
        return authority.substr(1, authority.find(']') - 1);
    }
    return authority.substr(0, authority.find(':'));
}

bool isLoopbackName(std::string_view host) {
    constexpr std::string_view localhost = "localhost";
    if (iequals(host, localhost)) {
        return true;
    }
    const std::string_view suffix = ".localhost";
    if (host.size() > suffix.size() && iequals(host.substr(host.size() - suffix.size()), suffix)) {
        return true;
    }
    boost::system::error_code error;
    const auto address = boost::asio::ip::make_address(std::string(host), error);
    return !error && address.is_loopback();
}

} // namespace

bool isForeignWebOrigin(std::string_view origin, std::string_view host) {
    if (iequals(origin, "null")) {
        return true;
    }
    const auto scheme = origin.find("://");
    if (scheme == std::string_view::npos ||
        !(startsWith(origin, "http://") || startsWith(origin, "https://"))) {
        return false;
    }
    auto authority = origin.substr(scheme + 3);
    authority = authority.substr(0, authority.find_first_of("/?#"));
    const auto originHost = hostPart(authority);
    return !iequals(originHost, hostPart(host)) && !isLoopbackName(originHost);
}

} // namespace brenvale
