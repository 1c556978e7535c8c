#pragma once

// Defines BRENVALE_SANITIZED where the address or the thread sanitizer watches the build: GCC and clang tell
// in different ways.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define BRENVALE_SANITIZED
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define BRENVALE_SANITIZED
#endif
#endif
