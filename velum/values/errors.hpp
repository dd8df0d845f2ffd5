#pragma once

#include <velum/core/api.hpp>

#include <stdexcept>
#include <string>

namespace velum {

/// A value map has no value under the key asked for.
class VELUM_API key_not_found : public std::runtime_error {
public:
    /// "key not found in any_map: " and the key
    explicit key_not_found(std::string const& key);
    key_not_found(key_not_found const&) = default;
    key_not_found& operator=(key_not_found const&) = default;
    ~key_not_found() override;
};

/// A value of a type that has no stored form, or a stored value whose type is not known.
class VELUM_API unknown_type : public std::runtime_error {
public:
    /// "unknown type in the any_map: " and `detail`: the type or tag, and the keys that lead to it
    explicit unknown_type(std::string const& detail);
    unknown_type(unknown_type const&) = default;
    unknown_type& operator=(unknown_type const&) = default;
    ~unknown_type() override;
};

}  // namespace velum
