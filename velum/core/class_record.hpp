#pragma once

#include <velum/core/guid.hpp>
#include <velum/core/i_serializer.hpp>
#include <velum/core/i_unknown_map.hpp>
#include <velum/core/iptr.hpp>
#include <velum/core/unknown.hpp>

#include <boost/function.hpp>

namespace velum {

// A class record is a constant `any_map` that describes a class. Its keys, and the types of their values:
//
//   "clsid"                 guid_t                   the identifier under which the class is registered
//   "class_name"            std::string              the name of the class
//   "create_function"       create_function_t        makes an object
//   "deserialize_function"  deserialize_function_t   makes an object that is read from a stream
//   "init_function"         init_function_t          sets the class up, once, when it is registered
//   "supported_interfaces"  std::set<guid_t>         what the class answers to `query_interface`

/// Controlling unknown or null, construction parameters, the interface wanted, the slot that receives it.
using create_function_t =
    boost::function<bool(iptr<i_unknown_t> const&, iptr<i_unknown_map_t> const&, guid_t const&, void*)>;

/// Controlling unknown or null, the serializer at the construction stage, the holder of the new object.
using deserialize_function_t =
    boost::function<bool(iptr<i_unknown_t> const&, iptr<i_serializer_t> const&, iptr<i_unknown_t>&)>;

/// Takes nothing and gives nothing; may throw.
using init_function_t = boost::function<void()>;

}  // namespace velum
