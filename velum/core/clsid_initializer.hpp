#pragma once

#include <velum/core/api.hpp>

namespace velum {

/// While an instance exists, the library's class identifiers have their values.
///
/// A source file whose static objects read a class identifier defines an instance ahead of them; the first instance
/// in the process sets the identifiers, all others only count. Instances are made and destroyed while modules load
/// and unload, by one thread at a time.
class VELUM_API clsid_initializer_t {
public:
    clsid_initializer_t();
    /// A copy is one more instance; assigning changes nothing.
    /// @{
    clsid_initializer_t(clsid_initializer_t const& other);
    clsid_initializer_t& operator=(clsid_initializer_t const& other);
    /// @}
    ~clsid_initializer_t();
};

}  // namespace velum
