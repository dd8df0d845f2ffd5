// The static objects of the library, in the order in which they come into being when it is loaded: within one file the
// language guarantees it. They are destroyed in the reverse order. Only further `clsid_initializer_t` instances stand
// elsewhere; whichever of them runs first, the class identifiers are there from then on.

#include <velum/boxed/string.hpp>
#include <velum/boxed/unknown_map.hpp>
#include <velum/boxed/value_map.hpp>
#include <velum/command/i_command.hpp>
#include <velum/core/class_record.hpp>
#include <velum/core/clsid_initializer.hpp>
#include <velum/core/detail/class_ids.hpp>
#include <velum/core/interface_ids.hpp>
#include <velum/factory/multi_object_factory.hpp>
#include <velum/factory/object_factory.hpp>
#include <velum/serial/serializer.hpp>
#include <velum/serial/stream.hpp>
#include <velum/values/type_key.hpp>

#include <string>

namespace velum {
namespace {

// The class identifiers, which everything below may read.
clsid_initializer_t const class_ids;

// Makes the tables of texts and type keys. Older than the static objects of every module that links the library, they
// outlive these, whose destructors may intern a text or write a map.
[[maybe_unused]] ustring const oldest_type = type_key(typeid(void));

template <class Object>
any_map description_of(char const* name) {
    return {{"class_name", std::string(name)}, {"supported_interfaces", object_access::identifiers<Object>()}};
}

}  // namespace

// The record of the boxed value map holds its identifier.
guid_t const uany_map_obj_t::_clsid = detail::clsid_uany_map_obj;

any_map const uany_map_obj_t::_class_info = {
    {"clsid", _clsid},
    {"create_function", create_function_t(&uany_map_obj_t::create_function)},
    {"deserialize_function", deserialize_function_t(&uany_map_obj_t::deserialize_function)},
};

guid_t const iid_unknown = iid_of<i_unknown_t>;
guid_t const iid_unknown_map = iid_of<i_unknown_map_t>;
guid_t const iid_uany_map = iid_of<i_uany_map_t>;
guid_t const iid_string = iid_of<i_string_t>;
guid_t const iid_serializer = iid_of<i_serializer_t>;
guid_t const iid_serializable = iid_of<i_serializable_t>;
guid_t const iid_ostream = iid_of<i_ostream_t>;
guid_t const iid_object_factory = iid_of<i_object_factory_t>;
guid_t const iid_istream = iid_of<i_istream_t>;
guid_t const iid_status("{1AE9BECD-001C-423b-8E75-47F60E5F0BF4}");
guid_t const iid_command = iid_of<i_command_t>;
guid_t const iid_event("{4538DD9D-F8F8-4a8f-B0D5-3614ED613F30}");
guid_t const iid_event_handler = iid_of<i_event_handler_t>;
guid_t const iid_context("{A8081763-A312-40BC-8F5A-14835C4942EF}");
guid_t const iid_command_manager("{2DE71A96-D2F6-4542-93CA-E62C3C0303A5}");

// The identifier of a factory made of factories, which no code asks for.
extern guid_t const multi_object_factory_id;
guid_t const multi_object_factory_id("{5107CBDF-4A51-41a4-B489-78E62F7BD2DC}");

// The records that describe a class.
any_map const basic_istream_t::class_info = description_of<basic_istream_t>("basic_istream");
any_map const basic_object_factory_t::class_info = description_of<basic_object_factory_t>("basic_object_factory");
any_map const basic_ostream_t::class_info = description_of<basic_ostream_t>("basic_ostream");
any_map const basic_serializer_t::class_info = description_of<basic_serializer_t>("basic_serializer");
any_map const basic_string_t::class_info = description_of<basic_string_t>("basic_string");
any_map const basic_unknown_map_t::class_info = description_of<basic_unknown_map_t>("basic_unknown_map");
any_map const multi_object_factory_t::class_info = description_of<multi_object_factory_t>("multi_object_factory");

}  // namespace velum
