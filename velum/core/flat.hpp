#pragma once

#include <velum/core/counted.hpp>
#include <velum/core/guid.hpp>
#include <velum/core/interface_ids.hpp>
#include <velum/core/iptr.hpp>
#include <velum/core/unknown.hpp>

namespace velum {

/// The base of a class that is one object with all its interfaces on itself and can't be aggregated.
///
/// `Object` derives from `flat_t<Object, its interfaces...>`, befriends `object_access` and has `std::int32_t ref_count
/// = 0` and `answers()`. The functions below make an object by its default constructor.
template <class Object, class... Interfaces>
class flat_t : public counted_t<Object, Interfaces...> {
protected:
    /// Makes an object and asks it for `iid` into the slot `out`. False when it doesn't have the interface; false, with
    /// the slot untouched, when `outer` isn't null.
    static bool create_object(iptr<i_unknown_t> const& outer, guid_t const& iid, void* out) {
        return !outer && iptr<Object>(object_access::make<Object>())->query_interface(iid, out);
    }

    /// Makes an object for a `deserialize_function`. False when `outer` isn't null.
    static bool rebuild_object(iptr<i_unknown_t> const& outer, iptr<i_unknown_t>& out) {
        if (outer) {
            return false;
        }
        out = iptr<i_unknown_t>(iptr<Object>(object_access::make<Object>()), iid_unknown);
        return true;
    }
};

}  // namespace velum
