#pragma once

namespace brenvale::bench {

/// What the machine can do at best, to hold the link's figures against. Each measures for about a second.

struct LoopbackLimit {
    double bytesPerSecond;
    double receivingSeconds; ///< of a processor, for each byte
    double sendingSeconds;
};
/// Bytes over a raw TCP connection on loopback, in blocks of 1 MiB.
[[nodiscard]] LoopbackLimit loopbackLimit();

/// Bytes a second of copying 1.4 MB blocks in memory.
[[nodiscard]] double memoryCopyBytesPerSecond();

/// Median time in microseconds of a 100-byte round trip over a raw TCP connection on loopback.
[[nodiscard]] double loopbackRoundTripMicroseconds();

} // namespace brenvale::bench
