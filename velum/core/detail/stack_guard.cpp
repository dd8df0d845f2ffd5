#include <velum/core/detail/stack_guard.hpp>

#include <algorithm>
#include <cstddef>
#include <stdexcept>

#include <pthread.h>
#include <sys/resource.h>

namespace velum::detail {
namespace {

struct stack_bounds {
    std::uintptr_t lowest = 0;
    std::size_t size = 0;  // bytes; 0 where the system doesn't tell
};

// For a main thread the system reads a file, which may fail; then a quarter of what the thread was allowed is left to
// whoever is on the stack already.
stack_bounds ask_system(std::uintptr_t here) {
    stack_bounds bounds;
    pthread_attr_t attributes;
    if (pthread_getattr_np(pthread_self(), &attributes) == 0) {
        void* lowest = nullptr;
        if (pthread_attr_getstack(&attributes, &lowest, &bounds.size) == 0) {
            bounds.lowest = reinterpret_cast<std::uintptr_t>(lowest);
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

stack_bounds bounds_of_thread(std::uintptr_t here) {
    thread_local constinit stack_bounds bounds;
    if (bounds.size == 0) {
        bounds = ask_system(here);
    }
    return bounds;
}

constexpr std::size_t least_room = std::size_t{16} * 1024;  // for unwinding, and for the code of a stream
constexpr std::size_t foreign_room =
    std::size_t{32} * 1024;  // what an operation takes of a stack that isn't the thread's own

/// The part of a foreign stack that the outermost operation on it may use.
struct window {
    std::uintptr_t lowest = 0;
    std::uintptr_t highest = 0;
};

thread_local constinit window open_window;

}  // namespace

// The limit is a place on the stack and not a distance from where the operation began, so operations that run inside
// one another (an object within a graph writes its own map) have one limit together.
stack_guard::stack_guard(reserve kept) {
    auto const here = reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0));
    stack_bounds const stack = bounds_of_thread(here);
    if (here >= stack.lowest && here - stack.lowest <= stack.size) {
        lowest_ = stack.lowest + std::max(stack.size / (kept == reserve::for_writing ? 2 : 4), least_room);
        return;
    }
    opens_window_ = here > open_window.highest || here + foreign_room < open_window.lowest;
    if (opens_window_) {
        open_window = {here - foreign_room, here};
    }
    lowest_ = open_window.lowest + (kept == reserve::for_writing ? foreign_room / 3 : 0);
}

stack_guard::~stack_guard() {
    if (opens_window_) {
        open_window = {};
    }
}

void stack_guard::throw_too_deep() {
    throw std::runtime_error("nesting too deep");
}

}  // namespace velum::detail
