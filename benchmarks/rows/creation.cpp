#include "../contest.hpp"

#include <velum/velum.hpp>

#include <glib-object.h>
#include <QtCore/QMetaType>
#include <QtCore/QSharedData>
#include <boost/function.hpp>
#include <boost/functional/factory.hpp>
#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <boost/smart_ptr/intrusive_ref_counter.hpp>
#include <boost/unordered_map.hpp>
#include <boost/uuid/uuid.hpp>
#include <boost/uuid/uuid_hash.hpp>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdint>
#include <cstring>
#include <memory>
#include <random>
#include <set>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

// An object of each of 64 classes, made by what identifies the class, held and dropped.

namespace {

using contest::enter;
using contest::work;

constexpr int class_count = 64;
constexpr char const* alone = "create by class identifier";
constexpr char const* composite = "create through a composite factory";

/// Calls `each` with the number of each class, as a type.
template <class Each>
void for_each_class(Each each) {
    [&each]<int... N>(std::integer_sequence<int, N...>) {
        (each(std::integral_constant<int, N>()), ...);
    }
    (std::make_integer_sequence<int, class_count>());
}

using boost::uuids::uuid;

std::vector<uuid> identifiers() {
    std::vector<uuid> made(class_count);
    std::mt19937 random(1);
    for (uuid& id : made) {
        std::generate(id.begin(), id.end(), [&random] { return static_cast<std::uint8_t>(random()); });
    }
    return made;
}

std::vector<std::string> names() {
    std::vector<std::string> made;
    made.reserve(class_count);
    for (int i = 0; i < class_count; ++i) {
        made.push_back("ContestMade" + std::to_string(i));
    }
    return made;
}

/// Makes and drops an object for each of `keys`. `create` gives a pointer that holds it.
template <class Key, class Create>
work create_each(std::vector<Key> const& keys, Create create) {
    return [keys, create] {
        for (Key const& key : keys) {
            auto const made = create(key);
            if (!made) {
                throw std::logic_error("an object wasn't made");
            }
            benchmark::DoNotOptimize(made);
        }
    };
}

/// Those who have one factory for all classes, wherever they come from, do the same work in both rows.
bool enter_both(std::string const& name, work (*prepare)()) {
    return enter({alone, name, class_count, prepare}) && enter({composite, name, class_count, prepare});
}

namespace of_velum {

class i_made_t : public velum::i_unknown_t {};

}  // namespace of_velum

}  // namespace

template <>
inline constexpr velum::guid_t velum::iid_of<of_velum::i_made_t>{"{0C6B8E52-3F7D-4A19-9D08-E5B1A7426C3F}"};

namespace {

namespace of_velum {

using velum::guid_t;
using velum::i_object_factory_t;
using velum::iptr;

template <int N>
class made_t : public velum::implements<made_t<N>, i_made_t> {
    std::int32_t number_ = N;
};

std::vector<guid_t> clsids() {
    std::vector<guid_t> made(class_count);
    std::memcpy(static_cast<void*>(made.data()), identifiers().data(), class_count * sizeof(guid_t));
    return made;
}

/// As many factories as there are, each with its share of the classes.
std::vector<iptr<i_object_factory_t>> factories(std::size_t count) {
    std::vector<iptr<i_object_factory_t>> made(count);
    for (iptr<i_object_factory_t>& factory : made) {
        velum::basic_object_factory_t::create(nullptr, velum::iid_object_factory, &factory);
    }
    for_each_class([&made, all = clsids()]<int N>(std::integral_constant<int, N>) {
        made[N % made.size()]->register_class(
            {{"clsid", all[N]},
             {"create_function", velum::create_function_t(&made_t<N>::create_function)},
             {"deserialize_function", velum::deserialize_function_t(&made_t<N>::deserialize_function)}});
    });
    return made;
}

iptr<i_object_factory_t> composed() {
    auto const members = factories(4);
    iptr<i_object_factory_t> made;
    velum::multi_object_factory_t::create(nullptr, {members.begin(), members.end()}, velum::iid_object_factory, &made);
    return made;
}

work create_in(iptr<i_object_factory_t> const& factory) {
    return create_each(clsids(), [factory](guid_t const& clsid) {
        iptr<i_made_t> made;
        factory->create_object(clsid, nullptr, nullptr, velum::iid_of<i_made_t>, &made);
        return made;
    });
}

bool const entered = enter({alone, "velum", class_count, [] { return create_in(factories(1).front()); }}) &&
                     enter({composite, "velum", class_count, [] { return create_in(composed()); }});

}  // namespace of_velum

namespace of_floor {

class made {
public:
    virtual ~made() = default;
    virtual std::int32_t add() = 0;
    virtual std::int32_t release() = 0;
};

template <int N>
class made_as : public made {
public:
    std::int32_t add() override { return ++count_; }

    std::int32_t release() override {
        std::int32_t const left = --count_;
        if (left == 0) {
            delete this;
        }
        return left;
    }

private:
    std::int32_t number_ = N;
    std::atomic<std::int32_t> count_ = 0;
};

void create_all() {
    for_each_class([]<int N>(std::integral_constant<int, N>) {
        made* object = new made_as<N>;
        benchmark::DoNotOptimize(object);  // from here on of any class
        object->add();
        object->release();
    });
}

bool const entered = enter_both("floor", [] { return work(create_all); });

}  // namespace of_floor

namespace of_gobject {

struct made {
    GObject base;
    std::int32_t number;
};

std::vector<std::string> const& registered() {
    static std::vector<std::string> const types = [] {
        auto all = names();
        for (std::string const& name : all) {
            g_type_register_static_simple(G_TYPE_OBJECT, name.c_str(), sizeof(GObjectClass), nullptr, sizeof(made),
                                          nullptr, GTypeFlags());
        }
        return all;
    }();
    return types;
}

struct unref {
    void operator()(gpointer object) const { g_object_unref(object); }
};

bool const entered = enter_both("GObject", [] {
    return create_each(registered(), [](std::string const& name) {
        return std::unique_ptr<void, unref>(g_object_new(g_type_from_name(name.c_str()), nullptr));
    });
});

}  // namespace of_gobject

namespace of_qt {

class made : public QSharedData {
public:
    virtual ~made() = default;
};

template <int N>
class made_as : public made {
    std::int32_t number_ = N;
};

std::vector<std::string> registered() {
    auto all = names();
    for_each_class([&all]<int N>(std::integral_constant<int, N>) { qRegisterMetaType<made_as<N>>(all[N].c_str()); });
    return all;
}

bool const entered = enter_both("QMetaType", [] {
    return create_each(registered(), [](std::string const& name) {
        void* const object = QMetaType::create(QMetaType::type(name.c_str()));
        return QExplicitlySharedDataPointer<made>(static_cast<made*>(object));
    });
});

}  // namespace of_qt

namespace of_boost {

class made : public boost::intrusive_ref_counter<made, boost::thread_safe_counter> {
public:
    virtual ~made() = default;
};

template <int N>
class made_as : public made {
    std::int32_t number_ = N;
};

using pointer = boost::intrusive_ptr<made>;
using registry = boost::unordered_map<uuid, boost::function<pointer()>>;

std::shared_ptr<registry> registered() {
    auto made_registry = std::make_shared<registry>();
    for_each_class([&all = *made_registry, ids = identifiers()]<int N>(std::integral_constant<int, N>) {
        all.emplace(ids[N], boost::factory<made_as<N>*>());
    });
    return made_registry;
}

bool const entered = enter_both("Boost", [] {
    return create_each(identifiers(), [all = registered()](uuid const& key) { return all->at(key)(); });
});

}  // namespace of_boost

}  // namespace
