#pragma once

#include <velum/core/api.hpp>
#include <velum/values/math/elements.hpp>

#include <compare>
#include <concepts>
#include <cstddef>

namespace math {

/// The `N` basis vectors of a linear space, each of type `V`; all zero by default.
template <class V, int N>
class VELUM_SHARED_TYPE linear_space_n {
public:
    using vector_type = V;          ///< of the basis
    static constexpr int size = N;  ///< vectors

    constexpr linear_space_n() = default;

    /// From all its vectors.
    /// @{
    template <std::convertible_to<V>... Vectors>
        requires(sizeof...(Vectors) == N)
    constexpr linear_space_n(Vectors const&... vectors) : vectors_{vectors...} {}

    constexpr linear_space_n(V const& v0, V const& v1, V const& v2) requires(N == 3) : vectors_{v0, v1, v2} {}
    /// @}

    /// Vector `i`, from 0.
    constexpr V const& operator[](int i) const { return vectors_[i]; }

    /// By the vectors: the first two that differ decide. A NaN equals nothing, and makes the values unordered.
    /// @{
    friend constexpr bool operator==(linear_space_n const& a, linear_space_n const& b) {
        return equal_elements(a.vectors_, b.vectors_, N);
    }
    friend constexpr std::partial_ordering operator<=>(linear_space_n const& a, linear_space_n const& b) {
        return compare_elements(a.vectors_, b.vectors_, N);
    }
    /// @}

private:
    V vectors_[static_cast<std::size_t>(N)] = {};
};

}  // namespace math
