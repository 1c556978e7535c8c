#pragma once

namespace brenvale {

/// What the process needs before anything else: standard output and standard error unbuffered, a closed pipe
/// that is an error and not the end, diagnostics off, and a heap that gives large blocks back to the system.
void setUpProcess();

} // namespace brenvale
