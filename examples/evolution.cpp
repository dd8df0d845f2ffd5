// A class that gets a second version, which reads the files of both; the first refuses those of the second.

#include <velum/velum.hpp>

#include <boost/smart_ptr/make_shared.hpp>

#include <iostream>
#include <sstream>
#include <stdexcept>
#include <string>

using namespace velum;

/// A task as version `Written` of the program has it: the first knows a title, the second a priority too. A program has
/// one of them, this one plays both. All have the same identifier, so that a file leads to the class of its reader.
template <int Written>
class task_t : public implements<task_t<Written>, i_serializable_t> {
public:
    static constexpr guid_t class_id{"{E55B986C-9740-458F-8240-F20834B1595D}"};
    static constexpr char const* class_name = "task";

    std::string title;
    int priority = 0;  // what a task of the first version means by having none

    /// The version comes first, then the state in a map, in which a reader finds the values that it knows.
    void serialize(iptr<i_serializer_t> const& s) const override {
        any_map state{{"version", Written}, {"title", title}};
        if (Written >= 2) {
            state["priority"] = priority;
        }
        velum::serialize(state, s);
    }
    void deserialize(iptr<i_serializer_t> const& s) override {
        any_map state;
        velum::deserialize(state, s);
        auto const version = any_map_get<int>(state, "version");
        if (version < 1 || version > Written) {
            throw std::runtime_error("a task of version " + std::to_string(version) + " is too new");
        }
        title = any_map_get<std::string>(state, "title");
        if (version >= 2) {
            priority = any_map_get<int>(state, "priority");
        }
    }
};

/// What a program of version `Reader` makes of a task that one of version `Writer` saved.
template <int Writer, int Reader>
std::string passed_on() {
    auto const task = make<task_t<Writer>>();
    task->title = "water the plants";
    task->priority = 7;
    auto const file = boost::make_shared<std::stringstream>();
    auto output = make<basic_ostream_t>(file).as<i_ostream_t>();
    make<basic_serializer_t>(output, 0).as<i_serializer_t>()->write_object(task.get());

    auto const factory = make<basic_object_factory_t>().as<i_object_factory_t>();
    factory->register_class(task_t<Reader>::class_info());
    auto const input = make<basic_istream_t>(file).as<i_istream_t>();
    iptr<i_serializable_t> loaded;
    try {
        make<basic_serializer_t>(input, factory, 0).as<i_serializer_t>()->read_object(loaded);
    } catch (std::runtime_error const& error) {
        return error.what();
    }
    auto const& copy = dynamic_cast<task_t<Reader> const&>(*loaded);
    return copy.title + ", priority " + std::to_string(copy.priority);
}

int main() {
    std::string const first = passed_on<1, 2>(), second = passed_on<2, 2>(), later = passed_on<2, 1>();
    std::cout << first << '\n' << second << '\n' << later << '\n';
    bool const reads_both = first == "water the plants, priority 0" && second == "water the plants, priority 7";
    return reads_both && later == "a task of version 2 is too new" ? 0 : 1;
}

// It prints:
//
//     water the plants, priority 0
//     water the plants, priority 7
//     a task of version 2 is too new
