#pragma once

#include <velum/core/api.hpp>
#include <velum/values/ustring.hpp>

#include <typeinfo>

namespace velum {

/// The readable name of a type, interned: "void" for that of an empty `boost::any`.
///
/// One for each name, whichever module the `type_info` lies in and whatever lay there before, so that tables can be
/// keyed by it. Safe from several threads as `ustring` is; a type met before costs no lock.
VELUM_API ustring type_key(std::type_info const& ti);

}  // namespace velum
