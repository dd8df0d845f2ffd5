#pragma once

#include <velum/core/api.hpp>
#include <velum/core/unknown.hpp>

namespace velum {

/// Deletes an object whose last reference is gone, for a `release` of one's own; those of the building blocks call it.
///
/// Objects often die within one another: an object drops the last reference on the next, and so on along a chain. The
/// first few dozen do so on the stack. What would go deeper waits until the outermost of them is done, so a chain of
/// any length goes, and a thread is through with all of it when the outermost `release` returns.
VELUM_API void destroy(i_unknown_t* object) noexcept;

}  // namespace velum
