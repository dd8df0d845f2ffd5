#pragma once

#include <velum/core/guid.hpp>

namespace velum::detail {

/// The class identifiers, private to the library; the first `clsid_initializer_t` gives them their values.
extern guid_t const& clsid_1;
extern guid_t const& clsid_2;
extern guid_t const& clsid_3;
extern guid_t const& clsid_4;
extern guid_t const& clsid_basic_string;
extern guid_t const& clsid_basic_unknown_map;
extern guid_t const& clsid_uany_map_obj;

}  // namespace velum::detail
