#pragma once

#include <velum/values/any_map.hpp>

#include <stdexcept>
#include <string>

namespace scene {

/// The value of type `T` under `key` in a map of either kind, itself and no copy, which matters for large ones.
/// Throws `velum::key_not_found`, or `std::runtime_error` for one of another type.
template <class T, class Map>
auto& lookup(Map& map, char const* key) {
    auto const found = map.find(key);
    if (found == map.end()) {
        throw velum::key_not_found(key);
    }
    auto* const value = boost::any_cast<T>(&found->second);
    if (value == nullptr) {
        throw std::runtime_error("wrong type of value under " + std::string(key));
    }
    return *value;
}

}  // namespace scene
