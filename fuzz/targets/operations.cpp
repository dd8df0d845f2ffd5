#include "checks.hpp"
#include "targets.hpp"

#include <velum/velum.hpp>

#include <array>
#include <cstddef>
#include <cstdint>
#include <set>

namespace {

using namespace fuzz;

/// An object that shows the interfaces of a part as its own.
class host : public velum::flat_t<host, velum::i_unknown_t> {
public:
    object_ptr part;

    bool query_interface(velum::guid_t const& iid, void* out) override {
        return flat_t::query_interface(iid, out) || (part && part->query_interface(iid, out));
    }

private:
    friend velum::object_access;
    std::int32_t ref_count = 0;
};

/// Runs a program of commands of four bytes over some places that hold objects.
class machine {
public:
    ~machine() {
        places_.fill(nullptr);
        auto const made = made_.objects();
        made_.forget();
        for (object_ptr const& object : made) {
            take_apart(object);
        }
        for (object_ptr const& object : made) {
            object->add_ref();
            require(object->release() == 1, "somebody still holds an object that nobody needs");
        }
    }

    void run(unsigned char command, unsigned char a, unsigned char b, unsigned char c) {
        static constexpr std::array steps = {&machine::create, &machine::aggregate, &machine::query,
                                             &machine::copy,   &machine::drop,      &machine::set,
                                             &machine::get,    &machine::edit,      &machine::link,
                                             &machine::box,    &machine::store,     &machine::register_more};
        (this->*steps[command % steps.size()])(at(a), at(b), c);
    }

private:
    object_ptr& at(std::size_t place) { return places_[place % places_.size()]; }

    static velum::guid_t const& interface(std::size_t n) {
        static std::array const known{velum::iid_unknown,  velum::iid_string,       velum::iid_unknown_map,
                                      velum::iid_uany_map, velum::iid_serializable, velum::iid_command};
        return known[n % known.size()];
    }

    static velum::guid_t const& known_class(std::size_t n) {
        static std::array const known{boxed_text("")->clsid(), stored_form(new_object_map())->clsid(),
                                      velum::uany_map_obj_t::_clsid, node::id, velum::iid_unknown};
        return known[n % known.size()];
    }

    void create(object_ptr& to, object_ptr& outer, unsigned char c) {
        object_ptr made;
        velum::guid_t const& iid = interface(c >> 4U);
        // What is made under a controlling unknown is for that alone.
        bool const under = (c & 8U) != 0 && outer && iid != velum::iid_unknown;
        bool const is_made = factory_->create_object(known_class(c), under ? outer : nullptr, nullptr, iid, &made);
        require(is_made == static_cast<bool>(made) && !(is_made && under), "create and the object disagree");
        made ? made_.add(made) : void();
        to = made;
    }

    void aggregate(object_ptr& to, object_ptr&, unsigned char c) {
        velum::iptr<host> const whole(new host);
        made_.add(whole.get());
        bool const has_part =
            factory_->create_object(known_class(c), whole.get(), nullptr, velum::iid_unknown, &whole->part);
        require(has_part == static_cast<bool>(whole->part), "create and the part disagree");
        to = whole.get();
    }

    void query(object_ptr& to, object_ptr& from, unsigned char c) {
        if (object_ptr const holder = from) {
            bool const found = holder->query_interface(interface(c), &to);
            require(found == static_cast<bool>(to), "the answer and the slot disagree");
            require(!to || identity_of(to) == identity_of(holder), "an object answers with another");
        }
    }

    void copy(object_ptr& to, object_ptr& from, unsigned char) { to = from; }
    void drop(object_ptr& at, object_ptr&, unsigned char) { at = nullptr; }

    void set(object_ptr& to, object_ptr& value, unsigned char c) {
        if (object_map const map{to, velum::iid_unknown_map}) {
            object_ptr const kept = value;
            map->set(std::string(1 + c % 3, 'k'), kept);
            require(map->get(std::string(1 + c % 3, 'k')) == kept, "a map doesn't have what was put in");
        }
    }

    void get(object_ptr& to, object_ptr& from, unsigned char c) {
        if (object_map const map{from, velum::iid_unknown_map}) {
            to = map->get(std::string(1 + c % 3, 'k'));
        }
    }

    void edit(object_ptr& to, object_ptr&, unsigned char c) {
        if (velum::iptr<velum::i_string_t> const text{to, velum::iid_string}) {
            text->string().resize(c, 'x');
        }
    }

    void link(object_ptr& from, object_ptr& to, unsigned char) {
        serializable const target = stored_form(to), holder = stored_form(from);
        auto* const one = dynamic_cast<node*>(holder.get());
        if (one != nullptr && target && one->links.size() < 3) {
            one->links.push_back(target);
        }
    }

    void box(object_ptr& to, object_ptr& value, unsigned char c) {
        object_ptr const kept = identity_of(value);
        to = identity_of(velum::uany_map_obj_t::create({{"object", kept}, {"number", int{c}}}));
        made_.add(to);
    }

    void store(object_ptr& to, object_ptr& from, unsigned char) {
        serializable back;
        written const there = write_records({stored_form(from)});
        require_documented(there.failure);
        std::istringstream stream(there.bytes);
        std::string const failure = failure_of([&] { made_.reader(stream, factory_)->read_object(back); });
        require(!there.failure.empty() || failure.empty(), "what was written can't be read: " + failure);
        require_documented(failure);
        back ? made_.add(back.get()) : void();  // of a failure no mapper hears
        to = back.get();
    }

    void register_more(object_ptr&, object_ptr&, unsigned char c) {
        any_map record = velum::uany_map_obj_t::_class_info;
        record["clsid"] = known_class(c);
        record.erase((c & 8U) != 0 ? "clsid" : "class_name");
        std::size_t const before = factory_->registered_classes().size();
        std::string const failure = failure_of([&] { factory_->register_class(record); });
        char const* const expected =
            (c & 8U) != 0
                ? "velum::key_not_found: key not found in any_map: clsid"
                : "velum::i_object_factory_t::class_already_registered: object already registered in this factory";
        bool const is_new = factory_->registered_classes().size() == before + 1;
        require(is_new ? failure.empty() : failure == expected, "registering comes to '" + failure + "'");
    }

    static object_factory new_classes() {
        object_factory const factory = new_factory();
        factory->register_class(node::id, &node::create_function, {}, &node::rebuild, {});
        return factory;
    }

    object_factory factory_ = new_classes();
    arrivals made_;
    std::array<object_ptr, 8> places_;
};

}  // namespace

// Commands for objects, after which all of them must go.
void fuzz::operations(std::string const& bytes) {
    constexpr std::size_t most = 4 * 200;
    machine runs;
    for (std::size_t i = 0; i + 4 <= bytes.size() && i < most; i += 4) {
        auto const byte = [&](std::size_t n) { return static_cast<unsigned char>(bytes[i + n]); };
        require_documented(failure_of([&] { runs.run(byte(0), byte(1), byte(2), byte(3)); }));
    }
}
