#pragma once

#include <cstdint>
#include <string_view>

namespace velum::detail {

/// Bits that are others in each process, so that nobody can store data that was made to suit them. No byte is zero.
std::uint64_t secret_bits();

/// A hash of which nobody knows the texts that have the same.
std::uint64_t secret_hash(std::string_view text);

}  // namespace velum::detail
