#pragma once

#include <compare>

namespace math {

/// How two values of a math type compare: the first pair of elements that isn't equal decides. A NaN is such a pair and
/// makes the values unordered, whatever stands behind it.
template <class T>
constexpr std::partial_ordering compare_elements(T const* a, T const* b, int count) {
    for (int i = 0; i < count; ++i) {
        if (!(a[i] == b[i])) {
            return a[i] <=> b[i];
        }
    }
    return std::partial_ordering::equivalent;
}

/// Whether all pairs of elements are equal. A NaN equals nothing.
template <class T>
constexpr bool equal_elements(T const* a, T const* b, int count) {
    return std::is_eq(compare_elements(a, b, count));
}

}  // namespace math
