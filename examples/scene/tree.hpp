#pragma once

#include <velum/core/i_unknown_map.hpp>

#include <iosfwd>
#include <string>

namespace scene {

/// Prints a document, one that has been checked, as a tree below its title. Each object has a number and stands there
/// once; in all other places "see #3" leads to it.
void print_tree(std::ostream& out, std::string const& title, velum::iptr<velum::i_unknown_map_t> const& document);

}  // namespace scene
