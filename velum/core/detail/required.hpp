#pragma once

#include <stdexcept>

namespace velum::detail {

/// What `pointer`, of whatever kind, leads to. Throws `std::runtime_error` with the text `otherwise` when it is null.
template <class Pointer>
auto& required(Pointer const& pointer, char const* otherwise) {
    if (!pointer) {
        throw std::runtime_error(otherwise);
    }
    return *pointer;
}

}  // namespace velum::detail
