// A class of one's own behind an interface, made directly and by a factory.

#include <velum/velum.hpp>

#include <iostream>
#include <string>

using namespace velum;

/// What others see of a counter. The identifier is made once, by uuidgen, and never changes.
class i_counter_t : public i_unknown_t {
public:
    virtual int count() = 0;
};
template <>
inline constexpr guid_t velum::iid_of<i_counter_t>{"{67191043-0B7D-4C53-B058-77D7E44C7BF7}"};

/// The class itself: questions for interfaces and the counts of references come from `implements`.
class counter_t : public implements<counter_t, i_counter_t, i_string_t> {
public:
    static constexpr guid_t class_id{"{70E448FD-0B40-47B3-9DBC-3D8552A885F3}"};
    static constexpr char const* class_name = "counter";
    static inline int alive = 0;

    explicit counter_t(std::string const& name = "nameless") : name_(name) { ++alive; }

    /// For a factory, which passes on what its caller gave, or null.
    explicit counter_t(iptr<i_unknown_map_t> const& params) : counter_t() {
        if (auto const name = params ? params->get("name").try_as<i_string_t>() : nullptr) {
            name_ = name->string();
        }
    }
    ~counter_t() override { --alive; }

    int count() override { return ++count_; }
    std::string& string() override { return name_; }
    std::string const& string() const override { return name_; }

private:
    std::string name_;
    int count_ = 0;
};

int main() {
    int last = 0;
    {
        auto const sheep = make<counter_t>("sheep").as<i_counter_t>();
        sheep->count();
        last = sheep->count();
        std::cout << sheep.as<i_string_t>()->string() << ": " << last << '\n';

        // Who knows nothing but the identifiers makes one by a factory in which the class is registered.
        auto const factory = make<basic_object_factory_t>().as<i_object_factory_t>();
        factory->register_class(counter_t::class_info());
        auto const params = make<basic_unknown_map_t>().as<i_unknown_map_t>();
        params->set("name", make<basic_string_t>("goats").as<i_unknown_t>());
        iptr<i_counter_t> goats;
        factory->create_object(counter_t::class_id, nullptr, params, iid_of<i_counter_t>, &goats);
        std::cout << goats.as<i_string_t>()->string() << ": " << goats->count() << '\n'
                  << "alive: " << counter_t::alive << '\n';
    }
    std::cout << "alive: " << counter_t::alive << '\n';
    return last == 2 && counter_t::alive == 0 ? 0 : 1;
}

// It prints:
//
//     sheep: 2
//     goats: 1
//     alive: 2
//     alive: 0
