#include "note.hpp"

#include "require.hpp"

#include <velum/boxed/string.hpp>
#include <velum/boxed/unknown_map.hpp>
#include <velum/values/any_map.hpp>

namespace scene {

velum::iptr<velum::i_unknown_t> make_note(velum::iptr<velum::i_object_factory_t> const& factory,
                                          std::string const& text) {
    velum::iptr<velum::i_unknown_t> note;
    for (velum::guid_t const& clsid : factory->registered_classes()) {
        std::string name;
        if (velum::any_map_try_get(factory->class_info(clsid), "class_name", name) && name == "note") {
            auto const params = velum::make<velum::basic_unknown_map_t>().as<velum::i_unknown_map_t>();
            params->set("text", velum::make<velum::basic_string_t>(text).as<velum::i_unknown_t>());
            require(factory->create_object(clsid, nullptr, params, velum::iid_unknown, &note), "a note can't be made");
            break;
        }
    }
    return note;
}

}  // namespace scene
