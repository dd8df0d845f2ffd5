#pragma once

#include <velum/core/i_unknown_map.hpp>
#include <velum/values/any_map.hpp>

#include <vector>

namespace scene {

/// A document as one value, in which its objects stand in the order in which they are met, the document first, and go
/// by their places in that list:
///
///     values  any_map          the plain values of the object
///     links   vector<any_map>  the objects to which it leads, each with its "name" (string) and "object" (int)
///
/// A list and no nest, since a stored tree may be deeper than one value can be nested.
using description = std::vector<velum::any_map>;

/// Describes a document that has been checked. Two descriptions that `any_compare` takes for equal are those of equal
/// values in the same places, and of the same objects: what is one object in two places is so in both. To `any_compare`
/// a NaN equals every number, and 0 is -0. The way from a node to its parent isn't among the links: it is the check
/// that finds those right.
description describe(velum::iptr<velum::i_unknown_map_t> const& document);

}  // namespace scene
