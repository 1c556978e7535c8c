#pragma once

#include <chrono>
#include <functional>

namespace brenvale {

/// Lets time pass until `isDone` or for as long as `limit`, while what the server reports is read and what
/// needs not wait goes on. Returns whether it is done; no at once where all is to end.
using X11Wait = std::function<bool(const std::function<bool()>& isDone, std::chrono::milliseconds limit)>;

} // namespace brenvale
