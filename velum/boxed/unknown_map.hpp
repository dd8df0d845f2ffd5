#pragma once

#include <velum/core/aggregatable.hpp>
#include <velum/core/any.hpp>
#include <velum/core/api.hpp>
#include <velum/core/i_serializable.hpp>
#include <velum/core/i_serializer.hpp>
#include <velum/core/i_unknown_map.hpp>
#include <velum/core/interface_ids.hpp>
#include <velum/core/iptr.hpp>

#include <cstdint>
#include <map>
#include <string>

namespace velum {

/// The boxed object map: objects, or null, under names. It answers `iid_unknown`, `iid_unknown_map` and
/// `iid_serializable`, and can be aggregated. It keeps its objects alive: one that leads back to the map lives until
/// `set` puts something else in its place.
///
/// It is stored as the word 0x00010000, a 32-bit count, and the names and objects; a reader takes them in any order.
/// Writing throws `std::runtime_error` ("object is not serializable") at an object without `iid_serializable`. Reading
/// drops what the map held; of a failure on the way it keeps what came before. Any number of threads may read it while
/// none changes it.
class VELUM_API basic_unknown_map_t : public aggregatable_t<basic_unknown_map_t> {
public:
    /// For `create`; keeps `outer` as it is, without a reference.
    explicit basic_unknown_map_t(i_unknown_t* outer);

    /// Makes an empty map under the controlling unknown `outer`, or null, and asks it for `iid` into the slot `out`.
    /// False when it doesn't have the interface; false, with the slot untouched, when `outer` isn't null and `iid`
    /// isn't `iid_unknown`.
    static bool create(iptr<i_unknown_t> const& outer, guid_t const& iid, void* out);

    /// The same. Reads nothing from `params`.
    static bool create_function(iptr<i_unknown_t> const& outer, iptr<i_unknown_map_t> const& params, guid_t const& iid,
                                void* out);

    /// Makes an empty map, whose content `deserialize` reads. Always true.
    static bool deserialize_function(iptr<i_unknown_t> const& outer, iptr<i_serializer_t> const& s,
                                     iptr<i_unknown_t>& out);

    /// "class_name" and "supported_interfaces".
    static std::map<std::string, boost::any> const class_info;

private:
    friend object_access;

    // Ordered, so that no choice of keys makes it slow and equal maps are stored alike by every build.
    using object_map = std::map<std::string, iptr<i_unknown_t>>;

    class VELUM_API basic_unknown_map_imp_t : public nested_t<object_map, i_unknown_map_t, i_serializable_t> {
    public:
        using nested_t::nested_t;

        void set(std::string const& key, iptr<i_unknown_t> const& value) override;
        iptr<i_unknown_t> get(std::string const& key) override;

        guid_t clsid() const override;
        void serialize_obj(iptr<i_serializer_t> const& s) const override;
        void serialize(iptr<i_serializer_t> const& s) const override;
        void deserialize(iptr<i_serializer_t> const& s) override;
    };

    basic_unknown_map_imp_t imp;
    std::int32_t ref_count = 0;
};

}  // namespace velum
