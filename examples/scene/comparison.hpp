#pragma once

#include <velum/values/any_map.hpp>

#include <cstddef>
#include <string>

namespace scene {

struct comparison {
    bool same = false;
    std::size_t values = 0;  // how many were looked at, maps and lists not counted
    std::string difference;  // the way to the first one, as in "/shapes/2/name"
};

/// Walks through two maps side by side, down to the bits of their numbers: a NaN equals itself, and 0 isn't -0.
comparison compare(velum::any_map const& a, velum::any_map const& b);

}  // namespace scene
