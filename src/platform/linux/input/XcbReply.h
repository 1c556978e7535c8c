#pragma once

#include <cstdlib>
#include <memory>

#include <xcb/xcb.h>

namespace brenvale {

struct FreeDelete {
    void operator()(void* memory) const { std::free(memory); } // NOLINT: libxcb allocates so
};

/// What libxcb hands over.
template <typename T>
using XcbPointer = std::unique_ptr<T, FreeDelete>;

/// Waits for the reply to a request; null where it failed or the connection is broken.
template <typename Reply, typename Cookie>
[[nodiscard]] XcbPointer<Reply> replyOf(Reply* (*wait)(xcb_connection_t*, Cookie, xcb_generic_error_t**),
                                        xcb_connection_t* connection, Cookie cookie) {
    xcb_generic_error_t* error = nullptr;
    XcbPointer<Reply> reply(wait(connection, cookie, &error));
    const XcbPointer<xcb_generic_error_t> failed(error);
    return reply;
}

} // namespace brenvale
