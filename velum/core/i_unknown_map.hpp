#pragma once

#include <velum/core/iptr.hpp>
#include <velum/core/unknown.hpp>

#include <string>

namespace velum {

/// Objects under names (`iid_unknown_map`).
class VELUM_API i_unknown_map_t : public i_unknown_t {
public:
    /// Puts `value`, which may be null, under `key` in the place of what was there.
    virtual void set(std::string const& key, iptr<i_unknown_t> const& value) = 0;

    /// What is under `key`, or null.
    virtual iptr<i_unknown_t> get(std::string const& key) = 0;
};

template <>
inline constexpr guid_t iid_of<i_unknown_map_t>{"{1B0392AD-BC33-4b95-8094-D69C6B48BD46}"};

}  // namespace velum
