#pragma once

#if !defined(__GNUC__)
#    error "velum needs gcc or clang; on Windows those of MinGW-w64"
#elif __cplusplus < 202002L
#    error "velum needs C++20"
#elif __SIZEOF_POINTER__ != 8 || __BYTE_ORDER__ != __ORDER_LITTLE_ENDIAN__
#    error "velum needs a 64-bit little-endian target: stored documents and identifiers rest on it"
#endif

/// Marks what the library exports; everything else is hidden.
#if !defined(_WIN32)
#    define VELUM_API __attribute__((visibility("default")))
#elif defined(VELUM_BUILDING_LIBRARY)
#    define VELUM_API __declspec(dllexport)
#else
#    define VELUM_API __declspec(dllimport)
#endif

/// The same for an inline function: nobody imports what is compiled in.
#if defined(_WIN32) && !defined(VELUM_BUILDING_LIBRARY)
#    define VELUM_API_INLINE
#else
#    define VELUM_API_INLINE VELUM_API
#endif

/// Marks a type that values may have, so that all modules share one `type_info` of it, where they can.
#if defined(_WIN32)
#    define VELUM_SHARED_TYPE
#else
#    define VELUM_SHARED_TYPE [[gnu::visibility("default")]]
#endif
