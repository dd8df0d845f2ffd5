#pragma once

#include <velum/values/ustring.hpp>

namespace velum::detail {

/// The tag of the type with the key `type`, or 0 for one outside the catalogue: the way from a held value to what a
/// table by tag has for it.
int type_tag(ustring const& type);

}  // namespace velum::detail
