#pragma once

#include <velum/core/api.hpp>
#include <velum/values/math/elements.hpp>

#include <compare>
#include <concepts>
#include <cstddef>

namespace tessa {

/// A matrix of `R` rows and `C` columns, stored row by row with nothing between the elements; all zero by default.
template <class T, int R, int C>
class VELUM_SHARED_TYPE mat {
public:
    using value_type = T;               ///< of an element
    static constexpr int rows = R;      ///< of `columns` elements each
    static constexpr int columns = C;   ///< of `rows` elements each
    static constexpr int size = R * C;  ///< elements

    constexpr mat() = default;

    /// From all elements in storage order.
    template <std::convertible_to<T>... Elements>
        requires(sizeof...(Elements) == std::size_t{R} * C)
    constexpr mat(Elements... elements) : elements_{static_cast<T>(elements)...} {}

    /// The element at storage position `i`, from 0: that of row `i / C` and column `i % C`.
    constexpr T operator[](int i) const { return elements_[i]; }

    /// By the elements: the first two that differ decide. A NaN equals nothing, and makes the values unordered.
    /// @{
    friend constexpr bool operator==(mat const& a, mat const& b) {
        return math::equal_elements(a.elements_, b.elements_, size);
    }
    friend constexpr std::partial_ordering operator<=>(mat const& a, mat const& b) {
        return math::compare_elements(a.elements_, b.elements_, size);
    }
    /// @}

private:
    T elements_[static_cast<std::size_t>(R) * static_cast<std::size_t>(C)] = {};
};

}  // namespace tessa
