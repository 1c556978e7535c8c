#pragma once

#include <chrono>
#include <functional>

namespace brenvale {

/// A serial execution context: steps run one after another, in the order in which they were handed over.
/// The process has two, the main queue and "ws.server". Both operations may be called from any thread, never
/// run the step before they return, and never block. A step must not throw.
class DispatchQueue {
public:
    using Step = std::move_only_function<void()>;

    virtual ~DispatchQueue() = default;

    /// Runs `step` once after all steps handed over before it.
    virtual void async(Step step) = 0;

    /// Runs `step` once, no sooner than `delay` from now.
    virtual void asyncAfter(std::chrono::milliseconds delay, Step step) = 0;
};

} // namespace brenvale
