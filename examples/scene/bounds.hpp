#pragma once

#include <velum/values/catalogue.hpp>

#include <algorithm>
#include <limits>

namespace scene {

using vec3 = math::vec<float, 3, math::use_simd_tag>;

/// A box along the axes; empty by default, with its corners the wrong way round.
struct box {
    vec3 lowest{infinite, infinite, infinite};
    vec3 highest{-infinite, -infinite, -infinite};

    void take_in(vec3 const& point) {
        lowest = {std::min(lowest[0], point[0]), std::min(lowest[1], point[1]), std::min(lowest[2], point[2])};
        highest = {std::max(highest[0], point[0]), std::max(highest[1], point[1]), std::max(highest[2], point[2])};
    }

    static constexpr float infinite = std::numeric_limits<float>::infinity();
};

}  // namespace scene
