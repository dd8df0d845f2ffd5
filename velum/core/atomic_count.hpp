#pragma once

#include <velum/core/api.hpp>

#include <cstdint>

namespace velum {

// The compilers' own operations, since std::atomic_ref takes no volatile object.

/// Adds 1 to `n` as one indivisible step and a full memory barrier; gives the new value.
VELUM_API_INLINE inline std::int32_t atomic_increment(std::int32_t volatile& n) {
    return __atomic_add_fetch(&n, 1, __ATOMIC_SEQ_CST);
}

/// Subtracts 1 from `n` as one indivisible step and a full memory barrier; gives the new value.
VELUM_API_INLINE inline std::int32_t atomic_decrement(std::int32_t volatile& n) {
    return __atomic_sub_fetch(&n, 1, __ATOMIC_SEQ_CST);
}

}  // namespace velum
