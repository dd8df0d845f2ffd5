#include <velum/core/detail/stack.hpp>

#include <algorithm>

#include <pthread.h>
#include <sys/resource.h>

namespace velum::detail {
namespace {

struct stack_bounds {
    stack_place lowest = 0;
    std::size_t size = 0;  // bytes; 0 where the system doesn't tell
};

// For a main thread the system reads a file, which may fail; then a quarter of what the thread was allowed is left to
// whoever is on the stack already.
stack_bounds ask_system(stack_place here) {
    stack_bounds bounds;
    pthread_attr_t attributes;
    if (pthread_getattr_np(pthread_self(), &attributes) == 0) {
        void* lowest = nullptr;
        if (pthread_attr_getstack(&attributes, &lowest, &bounds.size) == 0) {
            bounds.lowest = reinterpret_cast<stack_place>(lowest);
        }
        pthread_attr_destroy(&attributes);
        return bounds;
    }
    constexpr rlim_t usual = rlim_t{8} * 1024 * 1024;
    rlimit limit{};
    getrlimit(RLIMIT_STACK, &limit);
    bounds.size = static_cast<std::size_t>(std::min(limit.rlim_cur, usual));
    bounds.lowest = here - bounds.size / 4 * 3;
    return bounds;
}

}  // namespace

stack_place end_of_stack(stack_place place) {
    thread_local constinit stack_bounds bounds;
    if (bounds.size == 0) {
        bounds = ask_system(place);
    }
    return place >= bounds.lowest && place - bounds.lowest <= bounds.size ? bounds.lowest : 0;
}

}  // namespace velum::detail
