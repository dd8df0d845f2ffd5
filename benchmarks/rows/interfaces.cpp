#include "../contest.hpp"

#include <velum/velum.hpp>

#include <glib-object.h>
#include <QtCore/QObject>
#include <QtCore/QSharedPointer>
#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <boost/smart_ptr/intrusive_ref_counter.hpp>

#include <array>
#include <atomic>
#include <cstdint>
#include <cstring>
#include <memory>
#include <semaphore>
#include <stdexcept>
#include <stop_token>
#include <string>
#include <thread>
#include <vector>

// A handful of objects that can read and write: who reads through one asks it for the interface that writes, holds it
// and drops it; and who holds one copies the pointer and drops the copy.

namespace {

using contest::enter;
using contest::work;

constexpr int object_count = 8;
constexpr int rounds = 125;

/// A thread that only waits. While it lives the standard library counts as it does in any program with threads.
std::shared_ptr<std::jthread> waiting_thread() {
    return std::make_shared<std::jthread>([](std::stop_token const& stop) {
        std::binary_semaphore end(0);
        std::stop_callback const ending(stop, [&end] { end.release(); });
        end.acquire();
    });
}

/// An object of one of two classes, so that no call of it is resolved when this is compiled.
template <template <int> class Object, class Pointer>
Pointer make(int i) {
    return i % 2 == 0 ? Pointer(new Object<0>) : Pointer(new Object<1>);
}

template <class Pointer, class Use>
bool enter_on_objects(std::string const& row, std::string const& name, Pointer (*make_one)(int), Use use) {
    return enter({row, name, rounds * object_count, [=] {
                      std::vector<Pointer> objects;
                      objects.reserve(object_count);
                      for (int i = 0; i < object_count; ++i) {
                          objects.push_back(make_one(i));
                      }
                      return work([objects, use, other = waiting_thread()] {
                          for (int round = 0; round < rounds; ++round) {
                              for (Pointer const& object : objects) {
                                  use(object);
                              }
                          }
                      });
                  }});
}

template <class Pointer, class Ask>
bool enter_asking(std::string const& name, Pointer (*make_one)(int), Ask ask) {
    return enter_on_objects("ask for an interface", name, make_one, [ask](Pointer const& object) {
        auto const other_side = ask(object);
        if (!other_side) {
            throw std::logic_error("an object lacks an interface");
        }
        benchmark::DoNotOptimize(other_side);
    });
}

template <class Pointer>
bool enter_copying(std::string const& name, Pointer (*make_one)(int)) {
    return enter_on_objects("copy an iptr", name, make_one, [](Pointer const& object) {
        Pointer const copy(object);  // NOLINT(performance-unnecessary-copy-initialization): it is what is measured
        benchmark::DoNotOptimize(copy);
    });
}

namespace of_velum {

class i_reader_t : public velum::i_unknown_t {};
class i_writer_t : public velum::i_unknown_t {};

}  // namespace of_velum

}  // namespace

template <>
inline constexpr velum::guid_t velum::iid_of<of_velum::i_reader_t>{"{5E0B4B5D-6A2C-4D0C-8E43-2B6C9AF1D7E0}"};

template <>
inline constexpr velum::guid_t velum::iid_of<of_velum::i_writer_t>{"{A1D7C3F8-90B4-4E57-B2A6-7F3D18C5E462}"};

namespace {

namespace of_velum {

template <int Kind>
class pipe_t : public velum::implements<pipe_t<Kind>, i_reader_t, i_writer_t> {};

using reader = velum::iptr<i_reader_t>;

bool const entered =
    enter_asking("velum", make<pipe_t, reader>, [](reader const& object) { return object.try_as<i_writer_t>(); }) &&
    enter_copying("velum", make<pipe_t, reader>);

}  // namespace of_velum

namespace of_floor {

class counted {
public:
    virtual ~counted() = default;
    virtual std::int32_t add() = 0;
    virtual std::int32_t release() = 0;
};

template <int Kind>
class pipe : public counted {
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
    std::atomic<std::int32_t> count_ = 0;
};

void intrusive_ptr_add_ref(counted* object) {
    object->add();
}

void intrusive_ptr_release(counted* object) {
    object->release();
}

using pointer = boost::intrusive_ptr<counted>;
using count = std::shared_ptr<std::atomic<std::int32_t>>;

bool const entered = enter_on_objects("ask for an interface", "floor", make<pipe, pointer>,
                                      [](pointer const& object) {
                                          object->add();
                                          object->release();
                                      }) &&
                     enter_on_objects(
                         "copy an iptr", "floor", +[](int) { return std::make_shared<std::atomic<std::int32_t>>(1); },
                         [](count const& held) {
                             held->fetch_add(1);
                             held->fetch_sub(1);
                         });

}  // namespace of_floor

namespace of_std {

class reader {
public:
    virtual ~reader() = default;
};

class writer {
public:
    virtual ~writer() = default;
};

template <int Kind>
class pipe : public reader, public writer {};

using pointer = std::shared_ptr<reader>;

pointer make_pipe(int i) {
    return i % 2 == 0 ? pointer(std::make_shared<pipe<0>>()) : pointer(std::make_shared<pipe<1>>());
}

bool const entered = enter_asking("std::dynamic_pointer_cast", make_pipe,
                                  [](pointer const& object) { return std::dynamic_pointer_cast<writer>(object); }) &&
                     enter_copying("std::shared_ptr", make_pipe);

}  // namespace of_std

namespace of_boost {

class reader : public boost::intrusive_ref_counter<reader, boost::thread_safe_counter> {
public:
    virtual ~reader() = default;
};

template <int Kind>
class pipe : public reader {};

bool const entered = enter_copying("boost::intrusive_ptr", make<pipe, boost::intrusive_ptr<reader>>);

}  // namespace of_boost

namespace of_gobject {

GType writer_type() {
    static GType const type = g_type_register_static_simple(G_TYPE_INTERFACE, "ContestWriter", sizeof(GTypeInterface),
                                                            nullptr, 0, nullptr, GTypeFlags());
    return type;
}

GType make_pipe_type(char const* name) {
    GType const type = g_type_register_static_simple(G_TYPE_OBJECT, name, sizeof(GObjectClass), nullptr,
                                                     sizeof(GObject), nullptr, GTypeFlags());
    GInterfaceInfo const nothing_to_set_up{};
    g_type_add_interface_static(type, writer_type(), &nothing_to_set_up);
    return type;
}

using pointer = std::shared_ptr<GObject>;

pointer make_pipe(int i) {
    static std::array<GType, 2> const types{make_pipe_type("ContestPipe0"), make_pipe_type("ContestPipe1")};
    return {G_OBJECT(g_object_new(types[static_cast<std::size_t>(i % 2)], nullptr)), g_object_unref};
}

bool const entered = enter_on_objects("ask for an interface", "GObject", make_pipe, [](pointer const& object) {
    GTypeInstance* const writer = G_TYPE_CHECK_INSTANCE_CAST(object.get(), writer_type(), GTypeInstance);
    g_object_ref(writer);
    benchmark::DoNotOptimize(writer);
    g_object_unref(writer);
});

}  // namespace of_gobject

namespace of_qt {

class writer {
public:
    virtual ~writer() = default;
};

}  // namespace of_qt

}  // namespace

Q_DECLARE_INTERFACE(of_qt::writer, "contest.Writer/1.0")

namespace {

namespace of_qt {

template <int Kind>
class pipe : public QObject, public writer {
public:
    // What moc writes for a class with Q_INTERFACES.
    void* qt_metacast(char const* name) override {
        if (std::strcmp(name, "pipe") == 0) {
            return this;
        }
        if (std::strcmp(name, "writer") == 0 || std::strcmp(name, qobject_interface_iid<writer*>()) == 0) {
            return static_cast<writer*>(this);
        }
        return QObject::qt_metacast(name);
    }
};

using pointer = QSharedPointer<QObject>;

bool const entered = enter_asking("qobject_cast", make<pipe, pointer>,
                                  [](pointer const& object) { return object.objectCast<writer>(); });

}  // namespace of_qt

}  // namespace
