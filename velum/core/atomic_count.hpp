#pragma once

#include <velum/core/api.hpp>

#include <cstdint>

namespace velum {

/// Adds 1 to `n` as one indivisible step and a full memory barrier; gives the new value.
VELUM_API std::int32_t atomic_increment(std::int32_t volatile& n);

/// Subtracts 1 from `n` as one indivisible step and a full memory barrier; gives the new value.
VELUM_API std::int32_t atomic_decrement(std::int32_t volatile& n);

}  // namespace velum
