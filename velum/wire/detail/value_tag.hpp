#pragma once

#include <velum/core/any.hpp>
#include <velum/values/detail/type_tag.hpp>

#include <cstdint>
#include <typeinfo>

namespace velum::detail {

/// Throws `unknown_type` with the readable name of a type that has no tag.
[[noreturn]] void throw_unknown_type(std::type_info const& type);

/// The tag of the type that `value` holds. Throws as above.
inline int value_tag(boost::any const& value) {
    std::type_info const& type = value.type();
    int const tag = type_tag(type);
    if (tag == 0) {
        throw_unknown_type(type);
    }
    return tag;
}

/// Throws `unknown_type` for a tag that no type has.
[[noreturn]] void throw_unknown_tag(std::uint32_t tag);

}  // namespace velum::detail
