#pragma once

#include <velum/core/api.hpp>
#include <velum/core/guid.hpp>
#include <velum/core/iid_of.hpp>

#include <cstdint>

namespace velum {

/// The root of all interfaces.
///
/// An object lives while references to it are held and dies by the `release` that drops the last one; nobody deletes
/// it. All its interfaces live as long: a pointer to one is good while a reference is held through any of them. Any
/// thread may call the three operations at any time. `iptr` does the counting for its holder.
class VELUM_API i_unknown_t {
public:
    virtual ~i_unknown_t() = default;

    /// Asks the object for another of its interfaces.
    ///
    /// `out` is the address of a pointer-sized slot, best that of an `iptr` of the interface asked for. What the slot
    /// holds is released first, whatever comes of the question, so never ask an object into the slot that holds its
    /// last reference. On success the slot holds a new reference and the result is true; otherwise it is null.
    virtual bool query_interface(guid_t const& iid, void* out) = 0;

    /// Takes a reference and gives the new count.
    virtual std::int32_t add_ref() = 0;

    /// Drops a reference and gives the new count. At 0 the object is destroyed; see `destroy` for long chains.
    virtual std::int32_t release() = 0;

protected:
    i_unknown_t() = default;
    i_unknown_t(i_unknown_t const&) = default;
    i_unknown_t& operator=(i_unknown_t const&) = default;
};

template <>
inline constexpr guid_t iid_of<i_unknown_t>{"{F39ECE85-3AF5-444c-857E-337C7401A53F}"};

}  // namespace velum
