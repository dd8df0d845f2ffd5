#include <velum/core/detail/stack_guard.hpp>

#include <algorithm>
#include <stdexcept>

namespace velum::detail {

stack_guard::room::room(stack_place here) : lowest(end_of_stack(here)), highest(here) {
    if (lowest != 0) {
        std::size_t const size = here - lowest;
        lowest_for_reading = lowest + std::max(size / 4, least_stack);
        lowest_for_writing = lowest + std::max(size / 2, least_stack);
    } else {
        constexpr std::size_t size = std::size_t{32} * 1024;  // bytes
        lowest_for_reading = here - size;
        lowest_for_writing = lowest_for_reading + size / 3;
        lowest = lowest_for_reading - foreign_stack;
    }
}

stack_guard::room const* stack_guard::room::around(stack_place place) {
    return find([place](room const& at) { return place <= at.highest && place >= at.lowest; });
}

// The limit is a place on the stack and not a distance from where the operation began, so that operations within one
// another have one limit together.
stack_guard::stack_guard(reserve kept) {
    stack_place const here = place_of_frame();
    room const* within = room::around(here);
    if (within == nullptr) {
        within = &own_.emplace(here);
    }
    lowest_ = kept == reserve::for_writing ? within->lowest_for_writing : within->lowest_for_reading;
}

void stack_guard::throw_too_deep() {
    throw std::runtime_error("nesting too deep");
}

}  // namespace velum::detail
