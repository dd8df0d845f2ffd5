#pragma once

#include "description.hpp"

#include <iosfwd>
#include <string>

namespace scene {

/// Prints a document as a tree below its title. Each object has its number and stands there once; in all other places
/// "see #3" leads to it.
void print_tree(std::ostream& out, std::string const& title, description const& document);

}  // namespace scene
