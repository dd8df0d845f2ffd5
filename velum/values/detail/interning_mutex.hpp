#pragma once

#include <mutex>

namespace velum::detail {

/// Guards what interning and type keys add to their tables.
#if defined(VELUM_SINGLE_THREADED_INTERNING)
struct interning_mutex {
    void lock() {}
    void unlock() {}
};
#elif defined(_WIN32)
/// There `std::mutex` has a constructor and a destructor that run, and static objects may need the tables before the
/// one and after the other.
class interning_mutex {
public:
    void lock();
    void unlock();

private:
    void* state_ = nullptr;
};
#else
using interning_mutex = std::mutex;
#endif

}  // namespace velum::detail
