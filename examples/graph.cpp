// Objects that lead to each other, cycles and shared ones included, to a stream and back.

#include <velum/velum.hpp>

#include <boost/smart_ptr/make_shared.hpp>

#include <iostream>
#include <sstream>
#include <string>

using namespace velum;
using object_map = iptr<i_unknown_map_t>;

namespace {

object_map follow(object_map const& from, std::string const& key) {
    return from->get(key).as<i_unknown_map_t>();
}

std::string name_of(object_map const& person) {
    return person->get("name").as<i_string_t>()->string();
}

object_map new_person(std::string const& name) {
    auto const person = make<basic_unknown_map_t>().as<i_unknown_map_t>();
    person->set("name", make<basic_string_t>(name).as<i_unknown_t>());
    return person;
}

}  // namespace

int main() {
    // A map of objects under names; each of them knows the others, and both friends have one dog.
    object_map const anna = new_person("Anna"), ben = new_person("Ben"), dog = new_person("Rex");
    anna->set("friend", ben.as<i_unknown_t>());
    ben->set("friend", anna.as<i_unknown_t>());
    for (object_map const& owner : {anna, ben}) {
        owner->set("dog", dog.as<i_unknown_t>());
    }

    // One writer writes each object once, and afterwards where it stands.
    auto const file = boost::make_shared<std::stringstream>();
    file->exceptions(std::ios::failbit | std::ios::badbit);
    auto output = make<basic_ostream_t>(file).as<i_ostream_t>();
    make<basic_serializer_t>(output, 0).as<i_serializer_t>()->write_object(anna.as<i_serializable_t>());

    // The reader makes the objects by a factory that knows their classes.
    auto const factory = make<basic_object_factory_t>().as<i_object_factory_t>();
    auto const input = make<basic_istream_t>(file).as<i_istream_t>();
    iptr<i_serializable_t> loaded;
    make<basic_serializer_t>(input, factory, 0).as<i_serializer_t>()->read_object(loaded);

    object_map const copy = loaded.as<i_unknown_map_t>(), other = follow(copy, "friend");
    std::cout << name_of(copy) << " -> " << name_of(other) << " -> " << name_of(follow(other, "friend")) << '\n';
    bool const is_cycle = copy != anna && follow(other, "friend") == copy;
    bool const is_shared = follow(copy, "dog") == follow(other, "dog");
    std::cout << (is_cycle ? "the cycle is there\n" : "the cycle is lost\n")
              << (is_shared ? "one dog\n" : "two dogs\n");

    // Objects that hold each other live until somebody unties them.
    anna->set("friend", nullptr);
    copy->set("friend", nullptr);
    return is_cycle && is_shared ? 0 : 1;
}

// It prints:
//
//     Anna -> Ben -> Anna
//     the cycle is there
//     one dog
