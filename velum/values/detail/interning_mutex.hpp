#pragma once

#include <mutex>

namespace velum::detail {

/// Guards what interning and type keys add to their tables.
#if defined(VELUM_SINGLE_THREADED_INTERNING)
struct interning_mutex {
    void lock() {}
    void unlock() {}
};
#else
using interning_mutex = std::mutex;
#endif

}  // namespace velum::detail
