#pragma once

#include <velum/core/any.hpp>
#include <velum/values/errors.hpp>
#include <velum/values/ustring.hpp>

#include <map>
#include <string>

namespace velum {

/// Values under names, ordered by the bytes of the names. A map may be read by several threads while none changes it.
///
/// The types that can be stored are those of `value_catalogue`; the integers among them are `int` and `long long`, and
/// neither `long`, which `std::int64_t` is on many systems, nor any unsigned type.
///
/// A value has exactly the type it was given: `{"n", 1}` is an `int`, and `{"s", "text"}` a `char const*`, which can't
/// be stored; write `std::string("text")`. Copying a map copies all it holds; `std::move` a large value into its place.
using any_map = std::map<std::string, boost::any>;

/// Values under interned names, ordered by their addresses: quicker to search, in an order that means nothing.
using uany_map = std::map<ustring, boost::any>;

/// A copy of the value of `key`, or, for a `T` that is a reference to a constant type, the value itself.
/// Throws `key_not_found`, or `boost::bad_any_cast` when the value is empty or of any other type than `T`.
template <class T>
T any_map_get(any_map const& map, std::string const& key) {
    auto const found = map.find(key);
    if (found == map.end()) {
        throw key_not_found(key);
    }
    return boost::any_cast<T>(found->second);
}

/// Assigns the value of `key` to `out` and gives true, if there is one and it is a `T`; otherwise leaves `out` alone.
template <class T>
bool any_map_try_get(any_map const& map, std::string const& key, T& out) {
    auto const found = map.find(key);
    T const* const value = found == map.end() ? nullptr : boost::any_cast<T>(&found->second);
    if (value != nullptr) {
        out = *value;
    }
    return value != nullptr;
}

}  // namespace velum
