#pragma once

#include <velum/values/catalogue.hpp>

#include <ostream>
#include <type_traits>

namespace scene {

inline void put_value(std::ostream& out, velum::guid_t const& id) {
    out << id.string();
}

// A number, or whatever is made of numbers.
template <class T>
void put_value(std::ostream& out, T const& value) {
    if constexpr (std::is_arithmetic_v<T>) {
        out << value;
    } else {
        for (int i = 0; i < T::size; ++i) {
            out << (i == 0 ? "(" : " ");
            put_value(out, value[i]);
        }
        out << ')';
    }
}

inline void put_value(std::ostream& out, velum::affine_space3 const& space) {
    put_value(out, space.linear);
    out << " from ";
    put_value(out, space.origin);
}

}  // namespace scene
