#pragma once

#include <cstdint>

namespace brenvale {

/// What is known of the notification server that is on the bus now.
enum class ServerState : std::uint8_t {
    unknown, ///< nobody has asked what it can do
    asked,   ///< the answer is under way, and requests wait for it
    known,   ///< it has told
    silent   ///< it did not tell: the next request goes out all the same, and then it is unknown again
};

enum class ServerEvent : std::uint8_t { ask, told, notTold, requestSent, ownerChanged };

/// Pure.
[[nodiscard]] ServerState next(ServerState state, ServerEvent event);

/// How far the request for one notification has come.
enum class RequestState : std::uint8_t {
    waiting,      ///< for its turn
    calling,      ///< for the server's answer
    waitingAgain, ///< for the server that follows one that took the request with it, at its old place
    pausing,      ///< until the server takes a repeat
    callingAgain, ///< for the answer to the second try, which is the last
    done,
    failed
};

enum class RequestEvent : std::uint8_t {
    sent,
    taken,        ///< the server has it
    serverGone,   ///< it left the bus before it answered
    alreadyShown, ///< an exact repeat of what is on show is refused
    repeat,       ///< a repeat of what has just been closed is refused for a moment
    refused
};

/// Pure.
[[nodiscard]] RequestState next(RequestState state, RequestEvent event);

} // namespace brenvale
