#pragma once

#include <velum/core/i_serializer.hpp>

#include <cstdint>

namespace velum::detail {

// The word that opens the state stage of every boxed class. Readers take any: it is there for a later form of a class.

inline void write_version_word(i_serializer_t& s) {
    std::uint32_t const version = 0x00010000;
    s.write(reinterpret_cast<char const*>(&version), sizeof version);
}

inline void read_version_word(i_serializer_t& s) {
    std::uint32_t version = 0;
    s.read(reinterpret_cast<char*>(&version), sizeof version);
}

}  // namespace velum::detail
