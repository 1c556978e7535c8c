#pragma once

namespace brenvale {

/// Has this process do without a session or system bus that takes the connection and does not answer within
/// two seconds: whoever connects to it would wait much longer. Takes the bus's address out of the
/// environment, for good: libraries connect at any time, each for itself. Call before anything uses a bus.
void leaveOutSilentBuses();

} // namespace brenvale
