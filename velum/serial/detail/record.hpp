#pragma once

#include <cstdint>

namespace velum::detail::record {

// What one call of `write_object` writes, or of `read_object` reads. A word has 32 bits.
//
//     record    = null | reference | new
//     null      = 0:word
//     reference = 1:word number:word
//     new       = 2:word number:word clsid:16 construction-stage state-stage
//
// The stages are what the object's class writes, and only the class knows where they end. A reader takes every other
// tag for that of a new object.

inline constexpr std::uint32_t null = 0;
inline constexpr std::uint32_t reference = 1;
inline constexpr std::uint32_t new_object = 2;

}  // namespace velum::detail::record
