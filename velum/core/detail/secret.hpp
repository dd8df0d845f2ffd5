#pragma once

#include <cstdint>

namespace velum::detail {

/// Bits that are others in each process, so that nobody can store data that was made to suit them. No byte is zero.
std::uint64_t secret_bits();

}  // namespace velum::detail
