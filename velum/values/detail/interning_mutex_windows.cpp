#include <velum/values/detail/interning_mutex.hpp>

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#if !defined(VELUM_SINGLE_THREADED_INTERNING)
namespace velum::detail {
namespace {

static_assert(sizeof(SRWLOCK) == sizeof(void*));  // and its first state is null

SRWLOCK* lock_in(void** state) {
    return reinterpret_cast<SRWLOCK*>(state);
}

}  // namespace

void interning_mutex::lock() {
    AcquireSRWLockExclusive(lock_in(&state_));
}

void interning_mutex::unlock() {
    ReleaseSRWLockExclusive(lock_in(&state_));
}

}  // namespace velum::detail
#endif
