#include "link/Handshake.h"

#include <boost/asio/ip/address.hpp>
#include <boost/beast/core/string.hpp>

#include <optional>

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

bool endsWith(std::string_view text, std::string_view tail) {
    return text.size() >= tail.size() && iequals(text.substr(text.size() - tail.size()), tail);
}

std::optional<boost::asio::ip::address> asAddress(std::string_view host) {
    boost::system::error_code error;
    const auto address = boost::asio::ip::make_address(std::string(host), error);
    return error ? std::nullopt : std::optional(address);
}

bool isLoopbackName(std::string_view host) {
    const auto address = asAddress(host);
    return iequals(host, "localhost") || endsWith(host, ".localhost") || (address && address->is_loopback());
}

std::string_view withoutTail(std::string_view text, std::string_view tail) {
    return endsWith(text, tail) ? text.substr(0, text.size() - tail.size()) : text;
}

/// Whether `host` is the computer's name: whole as the system has it, or its first label, as the local
/// network calls it.
bool isOwnName(std::string_view host, std::string_view ownName) {
    const auto bare = withoutTail(withoutTail(host, "."), ".local");
    const auto own = withoutTail(ownName, ".local");
    return !bare.empty() && (iequals(bare, own) || iequals(bare, own.substr(0, own.find('.'))));
}

bool isNameOfThisComputer(std::string_view host, std::string_view ownName) {
    return asAddress(host) || isLoopbackName(host) || isOwnName(host, ownName);
}

} // namespace

bool isForeignWebOrigin(std::string_view origin, std::string_view host, std::string_view ownName) {
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
    const auto askedHost = hostPart(host);
    const bool isOwnPage = iequals(originHost, askedHost) || isLoopbackName(originHost);
    return !isOwnPage || !isNameOfThisComputer(askedHost, ownName);
}

std::string withoutServerField(std::string answer) {
    constexpr std::string_view lineEnd = "\r\n";
    const auto head = answer.find("\r\n\r\n");
    for (auto line = answer.find(lineEnd); head != std::string::npos && line < head;
         line = answer.find(lineEnd, line + lineEnd.size())) {
        const auto field = std::string_view(answer).substr(line + lineEnd.size());
        if (startsWith(field, "Server:")) {
            answer.erase(line, field.find(lineEnd) + lineEnd.size());
            break;
        }
    }
    return answer;
}

} // namespace brenvale
