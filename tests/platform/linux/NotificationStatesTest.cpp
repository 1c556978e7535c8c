#include "platform/linux/NotificationStates.h"

#include <gtest/gtest.h>

using namespace brenvale;

namespace {

ServerState after(std::initializer_list<ServerEvent> events) {
    auto state = ServerState::unknown;
    for (const auto event : events) {
        state = next(state, event);
    }
    return state;
}

RequestState after(std::initializer_list<RequestEvent> events) {
    auto state = RequestState::waiting;
    for (const auto event : events) {
        state = next(state, event);
    }
    return state;
}

} // namespace

TEST(ServerStates, AServerThatToldIsKnownUntilAnotherComes) {
    using enum ServerEvent;
    EXPECT_EQ(after({ask}), ServerState::asked);
    EXPECT_EQ(after({ask, told}), ServerState::known);
    EXPECT_EQ(after({ask, told, requestSent, requestSent}), ServerState::known);
    EXPECT_EQ(after({ask, told, ownerChanged}), ServerState::unknown);
}

TEST(ServerStates, OneThatDidNotTellIsAskedAnewForTheNextRequest) {
    using enum ServerEvent;
    EXPECT_EQ(after({ask, notTold}), ServerState::silent);
    EXPECT_EQ(after({ask, notTold, requestSent}), ServerState::unknown);
}

TEST(ServerStates, OneThatComesBecauseItIsAskedAnswersThatQuestion) {
    using enum ServerEvent;
    EXPECT_EQ(after({ask, ownerChanged}), ServerState::asked);
    EXPECT_EQ(after({ask, ownerChanged, told}), ServerState::known);
}

TEST(RequestStates, WhatTheServerTakesIsDone) {
    using enum RequestEvent;
    EXPECT_EQ(after({sent}), RequestState::calling);
    EXPECT_EQ(after({sent, taken}), RequestState::done);
    EXPECT_EQ(after({sent, alreadyShown}), RequestState::done);
}

TEST(RequestStates, AServerThatGoesLeavesTheRequestToTheNextOneOnce) {
    using enum RequestEvent;
    EXPECT_EQ(after({sent, serverGone}), RequestState::waitingAgain);
    EXPECT_EQ(after({sent, serverGone, sent}), RequestState::callingAgain);
    EXPECT_EQ(after({sent, serverGone, sent, taken}), RequestState::done);
    EXPECT_EQ(after({sent, serverGone, sent, serverGone}), RequestState::failed);
}

TEST(RequestStates, ARepeatIsTriedAgainOnce) {
    using enum RequestEvent;
    EXPECT_EQ(after({sent, repeat}), RequestState::pausing);
    EXPECT_EQ(after({sent, repeat, sent}), RequestState::callingAgain);
    EXPECT_EQ(after({sent, repeat, sent, repeat}), RequestState::done);
}

TEST(RequestStates, ARefusalIsAFailure) {
    using enum RequestEvent;
    EXPECT_EQ(after({sent, refused}), RequestState::failed);
    EXPECT_EQ(after({sent, repeat, sent, refused}), RequestState::failed);
}
