#include "platform/linux/NotificationStates.h"

#include <algorithm>
#include <array>

namespace brenvale {

namespace {

template <typename State, typename Event>
struct Transition {
    State state;
    Event event;
    State next;
};

using Server = Transition<ServerState, ServerEvent>;
using Request = Transition<RequestState, RequestEvent>;

// An event that a state has no row for leaves it as it is.
constexpr std::array serverTransitions{
    Server{ServerState::unknown, ServerEvent::ask, ServerState::asked},
    Server{ServerState::asked, ServerEvent::told, ServerState::known},
    Server{ServerState::asked, ServerEvent::notTold, ServerState::silent},
    // An owner that changes while it is asked comes because of the question, and answers it.
    Server{ServerState::known, ServerEvent::ownerChanged, ServerState::unknown},
    Server{ServerState::silent, ServerEvent::ownerChanged, ServerState::unknown},
    Server{ServerState::silent, ServerEvent::requestSent, ServerState::unknown},
};

constexpr std::array requestTransitions{
    Request{RequestState::waiting, RequestEvent::sent, RequestState::calling},
    Request{RequestState::calling, RequestEvent::taken, RequestState::done},
    Request{RequestState::calling, RequestEvent::alreadyShown, RequestState::done},
    Request{RequestState::calling, RequestEvent::serverGone, RequestState::waitingAgain},
    Request{RequestState::calling, RequestEvent::repeat, RequestState::pausing},
    Request{RequestState::calling, RequestEvent::refused, RequestState::failed},
    Request{RequestState::waitingAgain, RequestEvent::sent, RequestState::callingAgain},
    Request{RequestState::pausing, RequestEvent::sent, RequestState::callingAgain},
    Request{RequestState::callingAgain, RequestEvent::taken, RequestState::done},
    Request{RequestState::callingAgain, RequestEvent::alreadyShown, RequestState::done},
    Request{RequestState::callingAgain, RequestEvent::repeat, RequestState::done},
    Request{RequestState::callingAgain, RequestEvent::serverGone, RequestState::failed},
    Request{RequestState::callingAgain, RequestEvent::refused, RequestState::failed},
};

template <typename State, typename Event, typename Table>
State follow(const Table& transitions, State state, Event event) {
    const auto* const found = std::ranges::find_if(
        transitions, [&](const auto& row) { return row.state == state && row.event == event; });
    return found == transitions.end() ? state : found->next;
}

} // namespace

ServerState next(ServerState state, ServerEvent event) {
    return follow(serverTransitions, state, event);
}

RequestState next(RequestState state, RequestEvent event) {
    return follow(requestTransitions, state, event);
}

} // namespace brenvale
