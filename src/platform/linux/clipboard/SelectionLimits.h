#pragma once

#include <QtGlobal>

#include <chrono>

namespace brenvale {

/// How long another program may take to give us its contents, or the next piece of them.
constexpr std::chrono::seconds patienceForAPiece{3};
constexpr std::chrono::seconds patienceForAll{30};

/// Larger contents count as none.
constexpr qsizetype mostBytesRead = 256 << 20;

/// How long another program may leave what we give it unread.
constexpr std::chrono::seconds patienceForAReader{30};

} // namespace brenvale
