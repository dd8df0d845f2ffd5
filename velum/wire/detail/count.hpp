#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <stdexcept>

namespace velum::detail {

/// A length or count as it is stored. Throws `std::length_error` when 32 bits don't hold it.
inline std::uint32_t count_of(std::size_t size) {
    if (size > std::numeric_limits<std::uint32_t>::max()) {
        throw std::length_error("too long for a 32-bit count");
    }
    return static_cast<std::uint32_t>(size);
}

}  // namespace velum::detail
