#pragma once

#include <velum/core/api.hpp>
#include <velum/values/math/elements.hpp>

#include <compare>
#include <concepts>
#include <cstddef>

namespace math {

/// The storage of `vec`: three and four components lie in one 128-bit word.
struct VELUM_SHARED_TYPE use_simd_tag {};

template <class T, int N, class Storage>
class VELUM_SHARED_TYPE vec;

/// A vector of `N` components, all zero by default.
///
/// Lane i holds component i. A vector of three has a fourth lane that holds no component: it repeats the third when the
/// vector is made from components, is copied along, and takes no part in comparisons.
template <class T, int N>
class alignas(N > 2 ? 16 : alignof(T)) VELUM_SHARED_TYPE vec<T, N, use_simd_tag> {
public:
    using value_type = T;           ///< of a component
    static constexpr int size = N;  ///< components

    constexpr vec() = default;

    /// From all its components.
    template <std::convertible_to<T>... Components>
        requires(sizeof...(Components) == N)
    constexpr vec(Components... components) : lanes_{static_cast<T>(components)...} {
        for (int lane = N; lane < lane_count; ++lane) {
            lanes_[lane] = lanes_[N - 1];
        }
    }

    /// Component `i`, from 0.
    constexpr T operator[](int i) const { return lanes_[i]; }

    /// By the components: the first two that differ decide. A NaN equals nothing, and makes the values unordered.
    /// @{
    friend constexpr bool operator==(vec const& a, vec const& b) { return equal_elements(a.lanes_, b.lanes_, N); }
    friend constexpr std::partial_ordering operator<=>(vec const& a, vec const& b) {
        return compare_elements(a.lanes_, b.lanes_, N);
    }
    /// @}

private:
    static constexpr int lane_count = N > 2 ? 4 : N;

    T lanes_[static_cast<std::size_t>(lane_count)] = {};
};

}  // namespace math
