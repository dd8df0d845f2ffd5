#pragma once

#include <cstddef>
#include <cstdint>

namespace velum::detail {

/// A place on a stack; stacks grow towards lower addresses.
using stack_place = std::uintptr_t;

inline stack_place place_of_frame() {
    return reinterpret_cast<stack_place>(__builtin_frame_address(0));
}

/// What the last frames, unwinding, and the code of a stream need.
inline constexpr std::size_t least_stack = std::size_t{16} * 1024;  // bytes

/// How far apart two places on a stack that isn't the thread's own are taken to be: nobody tells where it ends.
inline constexpr std::size_t foreign_stack = std::size_t{1} << 20U;  // bytes

/// Where the stack of the calling thread ends, or 0 when `place` is on another, that of a fiber.
stack_place end_of_stack(stack_place place);

}  // namespace velum::detail
