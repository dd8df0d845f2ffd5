#include <velum/boxed/string.hpp>
#include <velum/boxed/unknown_map.hpp>
#include <velum/core/clsid_initializer.hpp>
#include <velum/core/detail/class_ids.hpp>
#include <velum/factory/object_factory.hpp>
#include <velum/values/any_map.hpp>

namespace velum {
namespace {

clsid_initializer_t const class_ids;

}  // namespace

basic_object_factory_t::basic_object_factory_t(i_unknown_t* outer) : imp(outer) {}

bool basic_object_factory_t::create(iptr<i_unknown_t> const& outer, guid_t const& iid, void* out) {
    return create_object(outer, iid, out);
}

bool basic_object_factory_t::create_function(iptr<i_unknown_t> const& outer, iptr<i_unknown_map_t> const&,
                                             guid_t const& iid, void* out) {
    return create(outer, iid, out);
}

basic_object_factory_t::basic_object_factory_imp_t::basic_object_factory_imp_t(i_unknown_t* controlling)
    : nested_t(controlling) {
    basic_object_factory_imp_t::register_class(detail::clsid_basic_string, &basic_string_t::create_function,
                                               basic_string_t::class_info, &basic_string_t::deserialize_function, {});
    basic_object_factory_imp_t::register_class(detail::clsid_basic_unknown_map, &basic_unknown_map_t::create_function,
                                               basic_unknown_map_t::class_info,
                                               &basic_unknown_map_t::deserialize_function, {});
}

void basic_object_factory_t::basic_object_factory_imp_t::register_class(any_map const& class_info) {
    auto const clsid = any_map_get<guid_t>(class_info, "clsid");
    auto const create = any_map_get<create_function_t>(class_info, "create_function");
    auto const deserialize = any_map_get<deserialize_function_t>(class_info, "deserialize_function");
    init_function_t init;
    any_map_try_get<init_function_t>(class_info, "init_function", init);
    i_object_factory_t& self = *this;
    self.register_class(clsid, create, class_info, deserialize, init);
}

void basic_object_factory_t::basic_object_factory_imp_t::register_class(guid_t const& clsid,
                                                                        create_function_t const& create,
                                                                        any_map const& class_info,
                                                                        deserialize_function_t const& deserialize,
                                                                        init_function_t const& init) {
    if (payload.classes.count(clsid) != 0) {
        throw class_already_registered();
    }
    auto const id = payload.registered_ids.insert(clsid).first;
    try {
        payload.classes.emplace(clsid, class_entry{create, class_info, deserialize});
    } catch (...) {
        payload.registered_ids.erase(id);
        throw;
    }
    if (init) {
        init();
    }
}

bool basic_object_factory_t::basic_object_factory_imp_t::create_object(guid_t const& clsid,
                                                                       iptr<i_unknown_t> const& controlling,
                                                                       iptr<i_unknown_map_t> const& params,
                                                                       guid_t const& iid, void* out) {
    return find(clsid).create(controlling, params, iid, out);
}

bool basic_object_factory_t::basic_object_factory_imp_t::deserialize_object(guid_t const& clsid,
                                                                            iptr<i_unknown_t> const& controlling,
                                                                            iptr<i_serializer_t> const& serializer,
                                                                            iptr<i_unknown_t>& out) {
    return find(clsid).deserialize(controlling, serializer, out);
}

std::set<guid_t> const& basic_object_factory_t::basic_object_factory_imp_t::registered_classes() const {
    return payload.registered_ids;
}

any_map const& basic_object_factory_t::basic_object_factory_imp_t::class_info(guid_t const& clsid) const {
    return find(clsid).class_info;
}

basic_object_factory_t::class_entry const& basic_object_factory_t::basic_object_factory_imp_t::find(
    guid_t const& clsid) const {
    auto const found = payload.classes.find(clsid);
    return found != payload.classes.end() ? found->second : throw class_not_registered();
}

}  // namespace velum
