#pragma once

#include <boost/any.hpp>

#include <cstdint>

namespace velum::detail {

/// The tag of the type that `value` holds. Throws `unknown_type` with the readable name of a type that has none.
int value_tag(boost::any const& value);

/// Throws `unknown_type` for a tag that no type has.
[[noreturn]] void throw_unknown_tag(std::uint32_t tag);

}  // namespace velum::detail
