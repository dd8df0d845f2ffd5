#pragma once

#include <velum/core/api.hpp>

#include <compare>

namespace math {

/// A linear space `L` and an origin; all zero by default.
template <class L>
class VELUM_SHARED_TYPE affine_space {
public:
    using vector_type = typename L::vector_type;  ///< that of the origin, and of the basis

    constexpr affine_space() = default;
    /// From its two parts.
    constexpr affine_space(L const& linear_part, vector_type const& origin_part)
        : linear(linear_part), origin(origin_part) {}

    L linear;            ///< the basis
    vector_type origin;  ///< where it stands

    /// Whether both parts are equal.
    friend constexpr bool operator==(affine_space const& a, affine_space const& b) {
        return a.linear == b.linear && a.origin == b.origin;
    }

    /// The linear parts decide; where neither is less, be it for a NaN in one of them, the origins do.
    friend constexpr std::partial_ordering operator<=>(affine_space const& a, affine_space const& b) {
        std::partial_ordering const linear_parts = a.linear <=> b.linear;
        if (std::is_lt(linear_parts) || std::is_gt(linear_parts)) {
            return linear_parts;
        }
        std::partial_ordering const origins = a.origin <=> b.origin;
        return std::is_eq(origins) ? linear_parts : origins;
    }
};

}  // namespace math
