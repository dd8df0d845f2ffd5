// The static objects of the library, in the order in which they come into being when it is loaded: within one file the
// language guarantees it. They are destroyed in the reverse order. Only further `clsid_initializer_t` instances stand
// elsewhere; whichever of them runs first, the class identifiers are there from then on.

#include <velum/boxed/string.hpp>
#include <velum/boxed/unknown_map.hpp>
#include <velum/boxed/value_map.hpp>
#include <velum/core/class_record.hpp>
#include <velum/core/clsid_initializer.hpp>
#include <velum/core/detail/class_ids.hpp>
#include <velum/core/interface_ids.hpp>
#include <velum/factory/multi_object_factory.hpp>
#include <velum/factory/object_factory.hpp>
#include <velum/serial/serializer.hpp>
#include <velum/serial/stream.hpp>
#include <velum/values/type_key.hpp>

#include <set>

namespace velum {
namespace {

// The class identifiers, which everything below may read.
clsid_initializer_t const class_ids;

// Makes the tables of texts and type keys. Older than the static objects of every module that links the library, they
// outlive these, whose destructors may intern a text or write a map.
[[maybe_unused]] ustring const oldest_type = type_key(typeid(void));

}  // namespace

// The record of the boxed value map holds its identifier.
guid_t const uany_map_obj_t::_clsid = detail::clsid_uany_map_obj;

any_map const uany_map_obj_t::_class_info = {
    {"clsid", _clsid},
    {"create_function", create_function_t(&uany_map_obj_t::create_function)},
    {"deserialize_function", deserialize_function_t(&uany_map_obj_t::deserialize_function)},
};

guid_t const iid_unknown("{F39ECE85-3AF5-444c-857E-337C7401A53F}");
guid_t const iid_unknown_map("{1B0392AD-BC33-4b95-8094-D69C6B48BD46}");
guid_t const iid_uany_map("{D2873496-E7B0-4909-AB10-C315479EFD64}");
guid_t const iid_string("{7DBD8CA5-357A-4c94-ACB8-EFDC52A200F9}");
guid_t const iid_serializer("{F8FCB0EC-8623-47ff-9A87-44F6E0EB7678}");
guid_t const iid_serializable("{E74D82CA-AEC9-456e-839F-04083BE78184}");
guid_t const iid_ostream("{F78DE13D-0868-457b-852D-1C518A4BD020}");
guid_t const iid_object_factory("{C6291C66-D18B-4277-99D2-9D678A8B1F80}");
guid_t const iid_istream("{BD70DD7C-A817-4dc7-BBD9-F1B4FBCC302D}");
guid_t const iid_status("{1AE9BECD-001C-423b-8E75-47F60E5F0BF4}");
guid_t const iid_command("{46A018C7-A324-4bea-9BFC-BED277A851D4}");
guid_t const iid_event("{4538DD9D-F8F8-4a8f-B0D5-3614ED613F30}");
guid_t const iid_event_handler("{FC5C9CA2-2CE4-466b-9B40-F887A093C179}");
guid_t const iid_context("{A8081763-A312-40BC-8F5A-14835C4942EF}");
guid_t const iid_command_manager("{2DE71A96-D2F6-4542-93CA-E62C3C0303A5}");

// The identifier of a factory made of factories, which no code asks for.
extern guid_t const multi_object_factory_id;
guid_t const multi_object_factory_id("{5107CBDF-4A51-41a4-B489-78E62F7BD2DC}");

// The records that describe a class list interface identifiers.
any_map const basic_istream_t::class_info = {
    {"class_name", std::string("basic_istream")},
    {"supported_interfaces", std::set<guid_t>{iid_unknown, iid_istream}},
};

any_map const basic_object_factory_t::class_info = {
    {"class_name", std::string("basic_object_factory")},
    {"supported_interfaces", std::set<guid_t>{iid_unknown, iid_object_factory}},
};

any_map const basic_ostream_t::class_info = {
    {"class_name", std::string("basic_ostream")},
    {"supported_interfaces", std::set<guid_t>{iid_unknown, iid_ostream}},
};

any_map const basic_serializer_t::class_info = {
    {"class_name", std::string("basic_serializer")},
    {"supported_interfaces", std::set<guid_t>{iid_unknown, iid_serializer}},
};

any_map const basic_string_t::class_info = {
    {"class_name", std::string("basic_string")},
    {"supported_interfaces", std::set<guid_t>{iid_unknown, iid_string, iid_serializable}},
};

any_map const basic_unknown_map_t::class_info = {
    {"class_name", std::string("basic_unknown_map")},
    {"supported_interfaces", std::set<guid_t>{iid_unknown, iid_unknown_map, iid_serializable}},
};

any_map const multi_object_factory_t::class_info = {
    {"class_name", std::string("multi_object_factory")},
    {"supported_interfaces", std::set<guid_t>{iid_unknown, iid_object_factory}},
};

}  // namespace velum
