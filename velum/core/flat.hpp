#pragma once

#include <velum/core/counted.hpp>
#include <velum/core/guid.hpp>
#include <velum/core/i_serializer.hpp>
#include <velum/core/i_unknown_map.hpp>
#include <velum/core/interface_ids.hpp>
#include <velum/core/iptr.hpp>
#include <velum/core/unknown.hpp>

#include <tuple>

namespace velum {

/// The base of a class that is one object with all its interfaces on itself and can't be aggregated.
///
/// `Object` derives from `flat_t<Object, its interfaces...>`, befriends `object_access` and has `std::int32_t ref_count
/// = 0`. It answers `iid_unknown` and its interfaces; `implements` is the shorter way to such a class.
template <class Object, class... Interfaces>
class flat_t : public counted_t<Object, Interfaces...> {
public:
    using interfaces = interface_list<Interfaces...>;  ///< what it answers beside `iid_unknown`

    /// Makes an object and asks it for `iid` into the slot `out`. False when it doesn't have the interface; false, with
    /// the slot untouched, when `outer` isn't null. A class that takes parameters has a constructor from `params`,
    /// which may be null; any other is made by its default constructor.
    static bool create_function(iptr<i_unknown_t> const& outer, iptr<i_unknown_map_t> const& params, guid_t const& iid,
                                void* out) {
        return !outer && made_from(params)->query_interface(iid, out);
    }

    /// Makes an object whose content `deserialize` reads. False when `outer` isn't null. A class with a construction
    /// stage reads it in a constructor from `s`; any other is made by its default constructor.
    static bool deserialize_function(iptr<i_unknown_t> const& outer, iptr<i_serializer_t> const& s,
                                     iptr<i_unknown_t>& out) {
        return !outer && made_from(s)->query_interface(iid_unknown, &out);
    }

protected:
    /// The side that stands for `iid`, or null; for `query_interface`.
    i_unknown_t* find_side(guid_t const& iid) {
        using identity = std::tuple_element_t<0, std::tuple<Interfaces...>>;
        return iid == detail::required_iid_of<i_unknown_t>() ? side_of<identity>(*this)
                                                             : interfaces::find(this->object(), iid);
    }

private:
    template <class Argument>
    static iptr<Object> made_from(Argument const& argument) {
        return object_access::pass_if_taken<Object>(
            argument, [](auto const&... taken) { return object_access::make<Object>(taken...); });
    }
};

}  // namespace velum
