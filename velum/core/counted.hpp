#pragma once

#include <velum/core/atomic_count.hpp>
#include <velum/core/destruction.hpp>
#include <velum/core/guid.hpp>
#include <velum/core/iid_of.hpp>
#include <velum/core/iptr.hpp>
#include <velum/core/unknown.hpp>

#include <cstdint>
#include <cstring>
#include <set>
#include <tuple>
#include <type_traits>
#include <utility>

namespace velum {

template <class Object, class... Interfaces>
class counted_t;
template <class Payload, class... Interfaces>
class nested_t;

/// One line of what a class answers to `query_interface`: an identifier and the pointer that stands for it.
struct answer_t {
    /// Keeps both as they are, without a reference. A null `p` is no answer.
    answer_t(guid_t const& id, i_unknown_t* p) : iid(id), pointer(p) {}
    answer_t(guid_t&&, i_unknown_t*) = delete;  // the identifier must outlive the answer

    guid_t const& iid;     ///< what is asked for
    i_unknown_t* pointer;  ///< what is given for it
};

/// The friend of a class that is made from the building blocks: it lets them see what the class keeps private.
struct object_access {
    /// The count.
    template <class Object>
    static std::int32_t& ref_count(Object& object) {
        return object.ref_count;
    }

    /// The pointer that stands for `iid`, or null.
    template <class Object>
    static i_unknown_t* find(Object& object, guid_t const& iid) {
        if constexpr (requires { object.answers(); }) {
            return find_answer(object.answers(), iid);
        } else {
            return object.find_side(iid);
        }
    }

    /// Whether `add_ref` is that of `counted_t`, and not one of the class's own.
    template <class Object>
    static constexpr bool counts_plainly = requires {
        is_of_counted(&Object::add_ref);
    };

    /// Can be called with the `add_ref` of `counted_t` alone.
    template <class Object, class... Interfaces>
    static void is_of_counted(std::int32_t (counted_t<Object, Interfaces...>::*)());

    /// A new object. Nobody else knows of it, so its first reference is taken without an indivisible step and without
    /// `add_ref`, unless its constructor has made it known.
    template <class Object, class... Arguments>
    static iptr<Object> make(Arguments&&... arguments) {
        auto* const object = new Object(std::forward<Arguments>(arguments)...);
        iptr<Object> holder;
        if (!counts_plainly<Object> || __atomic_load_n(&object->ref_count, __ATOMIC_RELAXED) != 0) {
            holder = object;
        } else {
            object->ref_count = 1;
            std::memcpy(static_cast<void*>(&holder), &object, sizeof object);
        }
        return holder;
    }

    /// Is none of the arguments that a class could mean.
    struct unrelated {};

    /// Converts to an `Argument` and nothing else.
    template <class Argument>
    struct leads_to {
        operator Argument const&() const;  ///< Is never called.
    };

    /// Whether what takes an `Argument` is a constructor that takes anything, such as one from a `boost::any`.
    template <class Object, class Argument>
    static constexpr bool takes_anything = requires {
        new Object(unrelated{});
        new Object(leads_to<Argument>{});
    };

    /// Calls `maker` with `argument` if an `Object` can be made from that, otherwise with nothing.
    template <class Object, class Argument, class Maker>
    static auto pass_if_taken(Argument const& argument, Maker maker) {
        if constexpr (requires { new Object(argument); } && !takes_anything<Object, Argument>) {
            return maker(argument);
        } else {
            return maker();
        }
    }

    /// The nested object of an aggregatable one.
    template <class Object>
    static auto& nested(Object& object) {
        return object.imp;
    }

    /// What an object made from `flat_t` or `aggregatable_t` answers by itself.
    template <class Object>
    static std::set<guid_t> identifiers() {
        if constexpr (requires { typename Object::interfaces; }) {
            return Object::interfaces::identifiers();
        } else {
            return decltype(Object::imp)::interfaces::identifiers();
        }
    }

    /// That of the building block, whatever the class derived from it calls `outer`.
    template <class Payload, class... Interfaces>
    static void set_controlling(nested_t<Payload, Interfaces...>& nested, i_unknown_t* outer) {
        nested.outer = outer;
    }

    /// Sets the controlling unknown, without a reference.
    template <class Object>
    static void control(Object& object, i_unknown_t* outer) {
        set_controlling(object.imp, outer);
    }
};

/// The pointer to the side `Interface` of an object that has several.
template <class Interface, class Object>
i_unknown_t* side_of(Object& object) {
    return static_cast<Interface*>(&object);
}

namespace detail {

template <class First, class Second>
constexpr bool have_identifiers_of_their_own() {
    static_assert(std::is_same_v<First, Second> || required_iid_of<First>() != required_iid_of<Second>(),
                  "these two interfaces of a class have the same identifier");
    return true;
}

}  // namespace detail

/// The interfaces of a class, by the identifiers that `iid_of` ties to them. Each must have one of its own.
template <class... Interfaces>
struct interface_list {
    /// The side of an object that has them all for `iid`, or null.
    template <class Object>
    static i_unknown_t* find(Object& object, guid_t const& iid) {
        static_assert((are_distinct<Interfaces>() && ...));
        i_unknown_t* side = nullptr;
        auto const matches = [&]<class Interface>(Interface* /*unused*/) {
            side = iid == detail::required_iid_of<Interface>() ? side_of<Interface>(object) : nullptr;
            return side != nullptr;
        };
        static_cast<void>((matches(static_cast<Interfaces*>(nullptr)) || ...));
        return side;
    }

    /// Theirs and `iid_unknown`.
    static std::set<guid_t> identifiers() {
        return {detail::required_iid_of<i_unknown_t>(), detail::required_iid_of<Interfaces>()...};
    }

    /// Whether `Interface` is one of them.
    template <class Interface>
    static constexpr bool contains = (std::is_same_v<Interface, Interfaces> || ...);

private:
    template <class Interface>
    static constexpr bool are_distinct() {
        static_assert(
            sizeof(Interface) == sizeof(i_unknown_t) && requires(i_unknown_t * p) { static_cast<Interface*>(p); },
            "an interface derives from velum::i_unknown_t alone and has no data");
        return detail::have_identifiers_of_their_own<Interface, i_unknown_t>() &&
               (detail::have_identifiers_of_their_own<Interface, Interfaces>() && ...);
    }
};

/// The end of `query_interface`: puts `pointer` into the slot `out`; see `i_unknown_t` for what becomes of the slot. An
/// interface derives from `i_unknown_t` alone, so its pointer and that of its base are one and the same.
inline bool fill_slot(void* out, i_unknown_t* pointer) {
    i_unknown_t* held = nullptr;
    std::memcpy(&held, out, sizeof held);
    if (held != nullptr) {
        held->release();
        held = nullptr;
        std::memcpy(out, &held, sizeof held);
    }
    if (pointer != nullptr) {
        std::memcpy(out, &pointer, sizeof pointer);
        pointer->add_ref();
    }
    return pointer != nullptr;
}

/// The pointer that stands for `iid` among `answers`, tried in their order, or null.
template <class Answers>
i_unknown_t* find_answer(Answers const& answers, guid_t const& iid) {
    for (answer_t const& answer : answers) {
        if (answer.iid == iid && answer.pointer != nullptr) {
            return answer.pointer;
        }
    }
    return nullptr;
}

/// The three operations of `i_unknown_t` for a class `Object` that counts its own references.
///
/// `Object` derives from `counted_t<Object, its interfaces...>`, befriends `object_access` and has
/// - `std::int32_t ref_count = 0`, which starts at 0: the first `iptr` makes it 1,
/// - `answers()`, which gives a `std::array` of `answer_t`, if it answers anything else than its interfaces.
/// It must not put an `iptr` on itself in its constructor or destructor, since the count would pass 0 there.
/// Writers of classes use it through `aggregatable_t` or `flat_t`.
template <class Object, class... Interfaces>
class counted_t : public Interfaces... {
public:
    /// Answers by `answers()`, or by the list of interfaces.
    bool query_interface(guid_t const& iid, void* out) override {
        return fill_slot(out, object_access::find(object(), iid));
    }

    /// Adds 1 to `ref_count`.
    std::int32_t add_ref() override { return atomic_increment(object_access::ref_count(object())); }

    /// Takes 1 from `ref_count`. The object isn't touched after that, since another thread may have destroyed it by
    /// then.
    std::int32_t release() override {
        std::int32_t const count = atomic_decrement(object_access::ref_count(object()));
        if (count == 0) {
            destroy(static_cast<std::tuple_element_t<0, std::tuple<Interfaces...>>*>(this));
        }
        return count;
    }

protected:
    /// The side that stands for `iid`, or null; for `query_interface`.
    i_unknown_t* find_side(guid_t const& iid) { return interface_list<Interfaces...>::find(object(), iid); }

    /// The whole object, of which this is a base.
    Object& object() { return static_cast<Object&>(*this); }
};

/// A new object of the class `Object`, which stands alone.
template <class Object, class... Arguments>
iptr<Object> make(Arguments&&... arguments) {
    if constexpr (requires { Object::make_alone(std::forward<Arguments>(arguments)...); }) {
        return Object::make_alone(std::forward<Arguments>(arguments)...);
    } else {
        return object_access::make<Object>(std::forward<Arguments>(arguments)...);
    }
}

}  // namespace velum
