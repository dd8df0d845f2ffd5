#pragma once

#include <cstdint>

namespace velum::detail {

// 32-bit numbers of an object stream, to and from whatever has `write` and `read` as a stream object or a serializer.

template <class Target>
void write_word(Target& target, std::uint32_t word) {
    target.write(reinterpret_cast<char const*>(&word), sizeof word);
}

/// Bytes that do not arrive are 0.
template <class Origin>
std::uint32_t read_word(Origin& origin) {
    std::uint32_t word = 0;
    origin.read(reinterpret_cast<char*>(&word), sizeof word);
    return word;
}

}  // namespace velum::detail
