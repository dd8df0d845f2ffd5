#include <velum/core/detail/stack_guard.hpp>

#include <algorithm>
#include <stdexcept>

namespace velum::detail {

stack_guard::room::room(stack_place here) : lowest(end_of_stack(here)), highest(here), is_foreign(lowest == 0) {
    constexpr std::size_t room_on_foreign_stack = std::size_t{32} * 1024;  // bytes
    if (is_foreign) {
        lowest = here - room_on_foreign_stack;
    }
}

stack_guard::room const* stack_guard::room::around(stack_place place) {
    return find([place](room const& at) {
        return place <= at.highest && place >= at.lowest - (at.is_foreign ? foreign_stack : 0);
    });
}

// The limit is a place on the stack and not a distance from where the operation began, so that operations within one
// another have one limit together.
stack_guard::stack_guard(reserve kept) {
    stack_place const here = place_of_frame();
    room const* within = room::around(here);
    if (within == nullptr) {
        within = &own_.emplace(here);
    }
    bool const is_writing = kept == reserve::for_writing;
    std::size_t const size = within->highest - within->lowest;
    lowest_ = within->lowest +
              (within->is_foreign ? (is_writing ? size / 3 : 0) : std::max(size / (is_writing ? 2 : 4), least_stack));
}

void stack_guard::throw_too_deep() {
    throw std::runtime_error("nesting too deep");
}

}  // namespace velum::detail
