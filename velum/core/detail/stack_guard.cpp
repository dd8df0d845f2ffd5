#include <velum/core/detail/stack_guard.hpp>

#include <algorithm>
#include <cstddef>
#include <stdexcept>

#include <pthread.h>

namespace velum::detail {
namespace {

struct stack_bounds {
    std::uintptr_t lowest = 0;
    std::size_t size = 0;  // bytes; 0 where the system doesn't tell
};

stack_bounds ask_system() {
    stack_bounds bounds;
    pthread_attr_t attributes;
    if (pthread_getattr_np(pthread_self(), &attributes) == 0) {
        void* lowest = nullptr;
        if (pthread_attr_getstack(&attributes, &lowest, &bounds.size) == 0) {
            bounds.lowest = reinterpret_cast<std::uintptr_t>(lowest);
        }
        pthread_attr_destroy(&attributes);
    }
    return bounds;
}

// Asked once a thread, since for a main thread the answer is read from a file.
stack_bounds bounds_of_thread() {
    thread_local constinit stack_bounds bounds;
    if (bounds.size == 0) {
        bounds = ask_system();
    }
    return bounds;
}

}  // namespace

// The limit is a place on the stack and not a distance from where the operation began, so operations that run inside
// one another (an object within a graph writes its own map) have one limit together.
stack_guard::stack_guard(reserve kept) {
    constexpr std::size_t least_room = 16 * 1024;    // for unwinding, and for the code of a stream
    constexpr std::size_t foreign_room = 32 * 1024;  // what an operation takes of a stack that isn't the thread's own
    auto const here = reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0));
    stack_bounds const stack = bounds_of_thread();
    if (here < stack.lowest || here - stack.lowest > stack.size) {
        lowest_ = here - foreign_room;
        return;
    }
    lowest_ = stack.lowest + std::max(stack.size / (kept == reserve::for_writing ? 2 : 4), least_room);
}

void stack_guard::throw_too_deep() {
    throw std::runtime_error("nesting too deep");
}

}  // namespace velum::detail
