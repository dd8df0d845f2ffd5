#include <velum/core/detail/required.hpp>
#include <velum/factory/multi_object_factory.hpp>
#include <velum/factory/object_factory.hpp>
#include <velum/values/any_map.hpp>

namespace velum {

multi_object_factory_t::multi_object_factory_t(i_unknown_t* outer, std::set<iptr<i_object_factory_t>> const& factories)
    : imp(outer, factories) {}

bool multi_object_factory_t::create(iptr<i_unknown_t> const& outer, std::set<iptr<i_object_factory_t>> const& factories,
                                    guid_t const& iid, void* out) {
    return create_object(outer, iid, out, factories);
}

bool multi_object_factory_t::create_function(iptr<i_unknown_t> const& outer, iptr<i_unknown_map_t> const&,
                                             guid_t const& iid, void* out) {
    return create(outer, {}, iid, out);
}

multi_object_factory_t::multi_object_factory_imp_t::multi_object_factory_imp_t(
    i_unknown_t* controlling, std::set<iptr<i_object_factory_t>> const& factories)
    : nested_t(controlling) {
    payload.factories = factories;
    basic_object_factory_t::create(nullptr, iid_object_factory, &payload.own);
    for (iptr<i_object_factory_t> const& factory : payload.factories) {
        for (guid_t const& clsid : detail::required(factory, "object factory is null").registered_classes()) {
            payload.routes[clsid] = factory.get();
            payload.registered_ids.insert(clsid);
        }
    }
}

void multi_object_factory_t::multi_object_factory_imp_t::register_class(any_map const& class_info) {
    route_to_own(any_map_get<guid_t>(class_info, "clsid"),
                 [&](i_object_factory_t& own) { own.register_class(class_info); });
}

void multi_object_factory_t::multi_object_factory_imp_t::register_class(guid_t const& clsid,
                                                                        create_function_t const& create,
                                                                        any_map const& class_info,
                                                                        deserialize_function_t const& deserialize,
                                                                        init_function_t const& init) {
    route_to_own(clsid,
                 [&](i_object_factory_t& own) { own.register_class(clsid, create, class_info, deserialize, init); });
}

// The route is made before the class is registered, which can't be taken back; what comes behind needs no memory unless
// the class has registered others meanwhile.
template <class Register>
void multi_object_factory_t::multi_object_factory_imp_t::route_to_own(guid_t const& clsid, Register register_class_in) {
    payload.registered_ids.insert(clsid);
    class_table<i_object_factory_t*> route{{clsid, payload.own.get()}};
    payload.routes.reserve(payload.routes.size() + 1);
    register_class_in(*payload.own);
    payload.routes.merge(route);  // which leaves a route that is there, for the line below
    payload.routes.find(clsid)->second = payload.own.get();
}

bool multi_object_factory_t::multi_object_factory_imp_t::create_object(guid_t const& clsid,
                                                                       iptr<i_unknown_t> const& controlling,
                                                                       iptr<i_unknown_map_t> const& params,
                                                                       guid_t const& iid, void* out) {
    return route_of(clsid).create_object(clsid, controlling, params, iid, out);
}

bool multi_object_factory_t::multi_object_factory_imp_t::deserialize_object(guid_t const& clsid,
                                                                            iptr<i_unknown_t> const& controlling,
                                                                            iptr<i_serializer_t> const& serializer,
                                                                            iptr<i_unknown_t>& out) {
    return route_of(clsid).deserialize_object(clsid, controlling, serializer, out);
}

std::set<guid_t> const& multi_object_factory_t::multi_object_factory_imp_t::registered_classes() const {
    return payload.registered_ids;
}

any_map const& multi_object_factory_t::multi_object_factory_imp_t::class_info(guid_t const& clsid) const {
    return route_of(clsid).class_info(clsid);
}

i_object_factory_t& multi_object_factory_t::multi_object_factory_imp_t::route_of(guid_t const& clsid) const {
    auto const route = payload.routes.find(clsid);
    return route != payload.routes.end() ? *route->second : throw class_not_registered();
}

}  // namespace velum
