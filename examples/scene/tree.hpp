#pragma once

#include <velum/values/any_map.hpp>

#include <iosfwd>
#include <string>

namespace scene {

/// Prints a map as a tree below its title. Long lists and texts and deep nesting are cut short.
void print_tree(std::ostream& out, std::string const& title, velum::any_map const& map);

}  // namespace scene
