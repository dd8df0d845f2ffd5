#pragma once

#include <velum/core/iptr.hpp>

#include <stdexcept>

namespace velum::detail {

/// What `pointer` holds. Throws `std::runtime_error` with the text `otherwise` when that is null.
template <class T>
T& required(iptr<T> const& pointer, char const* otherwise) {
    if (!pointer) {
        throw std::runtime_error(otherwise);
    }
    return *pointer;
}

}  // namespace velum::detail
