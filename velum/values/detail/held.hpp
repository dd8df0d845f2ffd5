#pragma once

#include <velum/core/any.hpp>

namespace velum::detail {

/// What `value` holds, for who knows that it is a `T` and needn't have it asked once more.
template <class T>
T const& held(boost::any const& value) {
    return *boost::unsafe_any_cast<T>(&value);
}

template <class T>
T& held(boost::any& value) {
    return *boost::unsafe_any_cast<T>(&value);
}

}  // namespace velum::detail
