// Loads a module, makes an object of a class that only the module knows, and sends it through a stream.

#include "module.hpp"

#include <boost/smart_ptr/make_shared.hpp>

#include <iostream>
#include <optional>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>

namespace {

using namespace velum;

/// The state of an object, through interfaces that the library has.
void show(iptr<i_serializable_t> const& object) {
    if (auto const text = object.try_as<i_string_t>()) {
        std::cout << "  text: " << text->string() << '\n';
    }
    if (auto const values = object.try_as<i_uany_map_t>()) {
        for (char const* const key : {"year", "month", "day"}) {
            std::cout << "  " << key << ": " << boost::any_cast<int>(values->map().at(key)) << '\n';
        }
    }
}

iptr<i_serializable_t> saved_and_loaded(iptr<i_serializable_t> const& object, iptr<i_object_factory_t> const& factory) {
    auto const file = boost::make_shared<std::stringstream>();
    auto output = make<basic_ostream_t>(file).as<i_ostream_t>();
    auto const input = make<basic_istream_t>(file).as<i_istream_t>();
    make<basic_serializer_t>(output, 0).as<i_serializer_t>()->write_object(object);
    std::cout << "saved: " << file->str().size() << " bytes\n";
    iptr<i_serializable_t> loaded;
    make<basic_serializer_t>(input, factory, 0).as<i_serializer_t>()->read_object(loaded);
    return loaded;
}

/// Gives a name that the module had interned.
ustring use_class(iptr<i_object_factory_t> const& factory, guid_t const& clsid) {
    any_map const& record = factory->class_info(clsid);
    std::cout << "class " << any_map_get<std::string>(record, "class_name") << ' ' << clsid.string() << '\n';
    for (guid_t const& iid : any_map_get<std::set<guid_t>>(record, "supported_interfaces")) {
        std::cout << "  interface " << iid.string() << '\n';
    }
    auto const params = make<basic_unknown_map_t>().as<i_unknown_map_t>();
    params->set("text", make<basic_string_t>("water the plants").as<i_unknown_t>());
    iptr<i_serializable_t> object;
    if (!factory->create_object(clsid, nullptr, params, iid_serializable, &object)) {
        throw std::runtime_error("the class makes no object that can be saved");
    }
    iptr<i_serializable_t> const loaded = saved_and_loaded(object, factory);
    std::cout << (loaded == object ? "loaded: the same\n" : "loaded: another object\n");
    show(loaded);
    auto const values = loaded.try_as<i_uany_map_t>();
    return values && !values->map().empty() ? values->map().begin()->first : ustring();
}

ustring run(plugin::module const& loaded) {
    auto const factory = make<basic_object_factory_t>().as<i_object_factory_t>();
    std::set<guid_t> const before = factory->registered_classes();
    loaded.register_in(*factory);
    ustring name;
    for (guid_t const& clsid : factory->registered_classes()) {
        if (before.count(clsid) == 0) {
            name = use_class(factory, clsid);
        }
    }
    return name;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: plugin_host MODULE\n";
        return 2;
    }
    std::optional<plugin::module> loaded;  // outlives what it made and what it may have thrown
    try {
        ustring const name = run(loaded.emplace(argv[1]));
        loaded.reset();  // factory, objects and values of the module went with `run`; names stay
        bool const stays = plugin::module::is_loaded(argv[1]);
        std::cout << (stays ? "still loaded: " : "unloaded: ") << (name == ustring(name.c_str()) ? "names" : "no names")
                  << " stay\n";
        return 0;
    } catch (std::exception const& failure) {
        std::cerr << "plugin_host: " << failure.what() << '\n';
        return 1;
    }
}
