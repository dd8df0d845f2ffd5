#pragma once

#include <velum/core/i_unknown_map.hpp>

#include <cstddef>
#include <string>

namespace scene {

struct comparison {
    bool same = false;
    std::size_t objects = 0;
    std::size_t values = 0;  // maps and lists not counted
    std::string difference;  // the way to the first one, as in "/root/0/mesh/name"
};

/// Walks through two documents side by side. They are the same when they have the same values in the same places, down
/// to the bits of the numbers, and the same objects: where one has one object in two places, so has the other, and the
/// parent of every child is the node above it.
comparison compare(velum::iptr<velum::i_unknown_map_t> const& a, velum::iptr<velum::i_unknown_map_t> const& b);

}  // namespace scene
