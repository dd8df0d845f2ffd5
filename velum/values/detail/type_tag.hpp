#pragma once

#include <typeinfo>

namespace velum::detail {

/// The tag of `type`, or 0 for one outside the catalogue: the way from a held value to what a table by tag has for it.
int type_tag(std::type_info const& type);

}  // namespace velum::detail
