#pragma once

#include <velum/core/aggregatable.hpp>
#include <velum/core/any.hpp>
#include <velum/core/api.hpp>
#include <velum/core/interface_ids.hpp>
#include <velum/factory/class_table.hpp>
#include <velum/factory/i_object_factory.hpp>

#include <cstdint>
#include <map>
#include <set>
#include <string>

namespace velum {

/// The factory made of factories. It answers `iid_unknown` and `iid_object_factory`, and can be aggregated.
///
/// What its members know when it is made, it knows too, and hands on to the member: of two with the same class to the
/// one at the higher address, which is to say to either. There is no second try with the other. What is registered on a
/// member later it doesn't see.
///
/// What is registered here goes to a factory of its own, which from then on serves the class in a member's place. That
/// factory has the two classes that every `basic_object_factory_t` has, so those can't be registered here, nor are they
/// known unless a member knows them. A registration that fails leaves the identifier among the registered ones; if it
/// failed in the class's "init_function", the class can't be made here, nor registered again.
///
/// Copies and moves share the factory of its own with the source; a move leaves the source without members and classes.
class VELUM_API multi_object_factory_t : public aggregatable_t<multi_object_factory_t> {
public:
    /// For `create`; keeps `outer` as it is, without a reference.
    multi_object_factory_t(i_unknown_t* outer, std::set<iptr<i_object_factory_t>> const& factories);

    /// Makes a factory of `factories`, which it keeps alive, under the controlling unknown `outer`, or null, and asks
    /// it for `iid` into the slot `out`. False when it doesn't have the interface; false, with the slot untouched, when
    /// `outer` isn't null and `iid` isn't `iid_unknown`. Throws `std::runtime_error` ("object factory is null").
    static bool create(iptr<i_unknown_t> const& outer, std::set<iptr<i_object_factory_t>> const& factories,
                       guid_t const& iid, void* out);

    /// The same without members. Reads nothing from `params`.
    static bool create_function(iptr<i_unknown_t> const& outer, iptr<i_unknown_map_t> const& params, guid_t const& iid,
                                void* out);

    /// "class_name" and "supported_interfaces".
    static std::map<std::string, boost::any> const class_info;

private:
    friend object_access;

    struct state {
        iptr<i_object_factory_t> own;
        std::set<iptr<i_object_factory_t>> factories;
        class_table<i_object_factory_t*> routes;  // to what the two members above keep alive
        std::set<guid_t> registered_ids;
    };

    class VELUM_API multi_object_factory_imp_t : public nested_t<state, i_object_factory_t> {
    public:
        multi_object_factory_imp_t(i_unknown_t* outer, std::set<iptr<i_object_factory_t>> const& factories);

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
        template <class Register>
        void route_to_own(guid_t const& clsid, Register register_class_in);
        i_object_factory_t& route_of(guid_t const& clsid) const;
    };

    multi_object_factory_imp_t imp;
    std::int32_t ref_count = 0;
};

}  // namespace velum
