#pragma once

#include <velum/core/counted.hpp>
#include <velum/core/guid.hpp>
#include <velum/core/i_serializer.hpp>
#include <velum/core/i_unknown_map.hpp>
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
public:
    /// Makes an object and asks it for `iid` into the slot `out`. False when it doesn't have the interface; false, with
    /// the slot untouched, when `outer` isn't null. Reads nothing from `params`.
    static bool create_function(iptr<i_unknown_t> const& outer, iptr<i_unknown_map_t> const& /*params*/,
                                guid_t const& iid, void* out) {
        return !outer && object_access::make<Object>()->query_interface(iid, out);
    }

    /// Makes an object whose content `deserialize` reads. False when `outer` isn't null.
    static bool deserialize_function(iptr<i_unknown_t> const& outer, iptr<i_serializer_t> const& /*s*/,
                                     iptr<i_unknown_t>& out) {
        if (outer) {
            return false;
        }
        object_access::make<Object>()->query_interface(iid_unknown, &out);
        return true;
    }
};

}  // namespace velum
