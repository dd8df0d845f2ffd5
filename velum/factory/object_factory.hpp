#pragma once

#include <velum/core/aggregatable.hpp>
#include <velum/core/any.hpp>
#include <velum/core/api.hpp>
#include <velum/core/interface_ids.hpp>
#include <velum/factory/class_table.hpp>
#include <velum/factory/i_object_factory.hpp>

#include <array>
#include <cstdint>
#include <map>
#include <set>
#include <string>

namespace velum {

/// The object factory. It knows `basic_string_t` and `basic_unknown_map_t` from the start, answers `iid_unknown` and
/// `iid_object_factory`, and can be aggregated. It holds no reference on the objects that it makes. A move leaves the
/// source without any class.
class VELUM_API basic_object_factory_t : public aggregatable_t<basic_object_factory_t> {
public:
    /// For `create`; keeps `outer` as it is, without a reference.
    explicit basic_object_factory_t(i_unknown_t* outer);

    /// Makes a factory under the controlling unknown `outer`, or null, and asks it for `iid` into the slot `out`. False
    /// when it doesn't have the interface; false, with the slot untouched, when `outer` isn't null and `iid` isn't
    /// `iid_unknown`.
    static bool create(iptr<i_unknown_t> const& outer, guid_t const& iid, void* out);

    /// The same. Reads nothing from `params`.
    static bool create_function(iptr<i_unknown_t> const& outer, iptr<i_unknown_map_t> const& params, guid_t const& iid,
                                void* out);

    /// "class_name" and "supported_interfaces".
    static std::map<std::string, boost::any> const class_info;

private:
    friend object_access;

    struct class_entry {
        create_function_t create;
        std::map<std::string, boost::any> class_info;
        deserialize_function_t deserialize;
    };

    /// Both members have the same identifiers: one enumerates them, the other finds a class.
    struct registry {
        std::set<guid_t> registered_ids;
        class_table<class_entry> classes;

        void drop() {
            classes.clear();
            registered_ids.clear();
        }
    };

    class VELUM_API basic_object_factory_imp_t : public nested_t<registry, i_object_factory_t> {
    public:
        explicit basic_object_factory_imp_t(i_unknown_t* outer);

        void register_class(std::map<std::string, boost::any> const& class_info) override;
        void register_class(guid_t const& clsid, create_function_t const& create,
                            std::map<std::string, boost::any> const& class_info,
                            deserialize_function_t const& deserialize, init_function_t const& init) override;
        bool create_object(guid_t const& clsid, iptr<i_unknown_t> const& controlling,
                           iptr<i_unknown_map_t> const& params, guid_t const& iid, void* out) override;
        bool deserialize_object(guid_t const& clsid, iptr<i_unknown_t> const& controlling,
                                iptr<i_serializer_t> const& serializer, iptr<i_unknown_t>& out) override;
        std::set<guid_t> const& registered_classes() const override;
        std::map<std::string, boost::any> const& class_info(guid_t const& clsid) const override;

    private:
        class_entry const& find(guid_t const& clsid) const;
    };

    basic_object_factory_imp_t imp;
    std::int32_t ref_count = 0;
};

}  // namespace velum
