#pragma once

/// Marks what the library exports; everything else is hidden.
#if defined(_WIN32)
#    if defined(VELUM_BUILDING_LIBRARY)
#        define VELUM_API __declspec(dllexport)
#    else
#        define VELUM_API __declspec(dllimport)
#    endif
#else
#    define VELUM_API __attribute__((visibility("default")))
#endif
