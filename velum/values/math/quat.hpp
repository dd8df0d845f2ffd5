#pragma once

#include <velum/core/api.hpp>
#include <velum/values/math/elements.hpp>

#include <compare>

namespace math {

/// A quaternion: four components, in the order in which they are given; all zero by default.
template <class T>
class VELUM_SHARED_TYPE quat {
public:
    using value_type = T;           ///< of a component
    static constexpr int size = 4;  ///< components

    constexpr quat() = default;
    /// From its components, in the order in which they are stored.
    constexpr quat(T c0, T c1, T c2, T c3) : components_{c0, c1, c2, c3} {}

    /// Component `i`, from 0.
    constexpr T operator[](int i) const { return components_[i]; }

    /// By the components: the first two that differ decide. A NaN equals nothing, and makes the values unordered.
    /// @{
    friend constexpr bool operator==(quat const& a, quat const& b) {
        return equal_elements(a.components_, b.components_, size);
    }
    friend constexpr std::partial_ordering operator<=>(quat const& a, quat const& b) {
        return compare_elements(a.components_, b.components_, size);
    }
    /// @}

private:
    T components_[4] = {};
};

}  // namespace math
