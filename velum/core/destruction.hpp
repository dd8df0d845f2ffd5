#pragma once

#include <velum/core/api.hpp>
#include <velum/core/unknown.hpp>

namespace velum {

/// Deletes an object whose last reference is gone, for a `release` of one's own; those of the building blocks call it.
///
/// Objects often die within one another: an object drops the last reference on the next, and so on along a chain, which
/// may be longer than the stack is deep. So when little of the stack is left (an eighth of what the outermost of them
/// found; on a fiber, 8 KiB below it) an object that dies within others waits until the outermost of them is gone.
VELUM_API void destroy(i_unknown_t* object) noexcept;

}  // namespace velum
