#pragma once

#include <velum/core/detail/stack.hpp>
#include <velum/core/detail/under_way.hpp>

#include <cstddef>
#include <optional>

namespace velum::detail {

// How much more than its own frames a level takes. A finished structure is copied and destroyed by recursive code too,
// that of the standard library and of Boost; with this a reader takes more of the stack for a level than they do.
#if defined(__OPTIMIZE__)
inline constexpr std::size_t stack_ballast = 256;  // bytes
#else
inline constexpr std::size_t stack_ballast = 1024;
#endif

/// Ends a recursion over nested data with an exception before the stack runs out.
///
/// A guard is made where an operation begins, and an object of type `level` stands in the frame of each level. A guard
/// knows the stack on which it was made. Operations within one another (an object within a graph writes its own map)
/// share the room that the outermost one found.
class stack_guard {
public:
    /// How much of that room stays unused: a quarter on reading, half on writing. So a reader that begins with as much
    /// room gets through all that a writer got through, although a level may take it half as much again.
    enum class reserve { for_reading, for_writing };

    explicit stack_guard(reserve kept);
    stack_guard(stack_guard const&) = delete;
    stack_guard& operator=(stack_guard const&) = delete;

    /// Throws `std::runtime_error` ("nesting too deep") when the stack has come down to the reserve.
    template <std::size_t Ballast>
    class level_of {
    public:
        explicit level_of(stack_guard const& guard) {
            asm volatile("" : : "r"(ballast_) : "memory");  // the optimiser must leave it on the stack
            if (place_of_frame() < guard.lowest_) {
                throw_too_deep();
            }
        }

    private:
        char ballast_[Ballast];
    };
    using level = level_of<stack_ballast>;

    /// A level of writing that goes on in the code of some class, which may take more of the stack when it reads.
    using level_of_object = level_of<3 * stack_ballast>;

private:
    /// The room that an outermost operation found.
    struct room : under_way<room> {
        explicit room(stack_place here);

        static room const* around(stack_place place);

        stack_place lowest;
        stack_place highest;
        stack_place lowest_for_reading;
        stack_place lowest_for_writing;
    };

    [[noreturn]] static void throw_too_deep();

    std::optional<room> own_;  // of an outermost operation
    stack_place lowest_;
};

}  // namespace velum::detail
