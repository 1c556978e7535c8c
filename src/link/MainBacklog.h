#pragma once

#include <cstddef>

namespace brenvale {

/// What the messages of one connection have left with the main thread and is not known to have run there.
/// Beyond a limit the connection is not read, so that a flood waits with its sender and not in memory; phones
/// never get there, and no other connection is held up.
///
/// To learn what has run, a mark is sent behind it: when main gets to the mark it has run all that was
/// before. So nothing is counted on main, and while main keeps up a mark is rare. Queue only.
class MainBacklog {
public:
    /// A message has left steps with main that hold `bytes`.
    void posted(std::size_t bytes);

    /// Whether the connection has to wait.
    [[nodiscard]] bool isFull() const;

    /// Whether a mark is to be sent now; then the caller does so, and reports it by `markRan`.
    [[nodiscard]] bool takeMark();
    void markRan();

    /// Remembers that the connection waits; gives whether it did.
    bool setWaiting(bool isWaiting);

private:
    struct Amount {
        std::size_t messages = 0;
        std::size_t bytes = 0;
    };
    Amount posted_; ///< not known to have run
    Amount marked_; ///< the part before the mark that is on its way
    bool isMarked_ = false;
    bool isWaiting_ = false;
};

} // namespace brenvale
