#pragma once

#include <functional>

namespace brenvale {

/// What is done before the process ends, whichever way it ends by itself; an empty function is nothing. It is
/// called on any thread, at most once at a time, and must come to its end. Any thread.
void setLastSteps(std::function<void()> steps);

/// Does them now: the caller is about to end the process. Any thread.
void runLastSteps();

} // namespace brenvale
