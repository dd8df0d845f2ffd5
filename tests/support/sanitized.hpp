#pragma once

// Whether a sanitizer has memory in its hands.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#    define VELUM_SANITIZED 1
#elif defined(__has_feature)
#    if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#        define VELUM_SANITIZED 1
#    endif
#endif
#if !defined(VELUM_SANITIZED)
#    define VELUM_SANITIZED 0
#endif

namespace support {

inline constexpr bool sanitized = VELUM_SANITIZED != 0;

}  // namespace support
