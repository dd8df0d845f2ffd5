// An object is reached through its interfaces, by identifiers, and lives until nobody holds it.

#include <velum/velum.hpp>

#include <iostream>
#include <stdexcept>
#include <string>

using namespace velum;

int main() {
    // A string in an object. Whoever holds one of its interfaces keeps the object.
    iptr<i_string_t> const text = make<basic_string_t>("hello").as<i_string_t>();
    text->string() += ", object";
    std::cout << text->string() << '\n';

    // The same object as something that can be stored. It is known by what it answers for i_unknown_t.
    auto const stored = text.as<i_serializable_t>();
    bool const same = text.as<i_unknown_t>() == stored.as<i_unknown_t>();
    std::cout << (same ? "one object" : "two objects") << " of class " << stored->clsid().string() << '\n';

    // What it doesn't have is null with try_as, and an error with as.
    bool refused = !text.try_as<i_unknown_map_t>();
    try {
        text.as<i_command_t>();
        refused = false;
    } catch (std::runtime_error const& error) {
        std::cout << error.what() << '\n';
    }

    // A factory makes objects by the identifiers of their classes. It knows this one from the start.
    auto const factory = make<basic_object_factory_t>().as<i_object_factory_t>();
    iptr<i_string_t> other;
    bool const made = factory->create_object(stored->clsid(), nullptr, nullptr, iid_string, &other);
    return same && refused && made && other->string().empty() && other != text ? 0 : 1;
}

// It prints:
//
//     hello, object
//     one object of class {43D4FF6A-038F-4D67-B193-8D21B14DA8BC}
//     object doesn't have the interface velum::i_command_t {46A018C7-A324-4BEA-9BFC-BED277A851D4}
