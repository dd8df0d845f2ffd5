#pragma once

#include <velum/core/detail/required.hpp>
#include <velum/core/detail/words.hpp>
#include <velum/core/i_serializer.hpp>

namespace velum::detail {

// The word that opens the state stage of every boxed class. Readers take any: it is there for a later form of a class.

inline void write_version_word(iptr<i_serializer_t> const& s) {
    write_word(required(s, "serializer is null"), 0x00010000);
}

inline void read_version_word(iptr<i_serializer_t> const& s) {
    read_word(required(s, "serializer is null"));
}

}  // namespace velum::detail
