#pragma once

#include <velum/core/atomic_count.hpp>
#include <velum/core/destruction.hpp>
#include <velum/core/guid.hpp>
#include <velum/core/iptr.hpp>
#include <velum/core/unknown.hpp>

#include <cstdint>
#include <cstring>
#include <tuple>
#include <utility>

namespace velum {

/// One line of what a class answers to `query_interface`: an identifier and the pointer that stands for it.
struct answer_t {
    answer_t(guid_t const& id, i_unknown_t* p) : iid(id), pointer(p) {}
    answer_t(guid_t&&, i_unknown_t*) = delete;  // the identifier must outlive the answer

    guid_t const& iid;
    i_unknown_t* pointer;
};

/// The friend of a class that is made from the building blocks: it lets them see what the class keeps private.
struct object_access {
    template <class Object>
    static std::int32_t& ref_count(Object& object) {
        return object.ref_count;
    }

    template <class Object>
    static auto answers(Object& object) {
        return object.answers();
    }

    /// A new object. Nobody else knows of it, so its first reference is taken without an indivisible step and without
    /// `add_ref`, unless its constructor has made it known.
    template <class Object, class... Arguments>
    static iptr<Object> make(Arguments&&... arguments) {
        auto* const object = new Object(std::forward<Arguments>(arguments)...);
        iptr<Object> holder;
        if (__atomic_load_n(&object->ref_count, __ATOMIC_RELAXED) != 0) {
            holder = object;
        } else {
            object->ref_count = 1;
            std::memcpy(static_cast<void*>(&holder), &object, sizeof object);
        }
        return holder;
    }

    template <class Object>
    static void control(Object& object, i_unknown_t* outer) {
        object.imp.outer = outer;
    }
};

/// The pointer to the side `Interface` of an object that has several.
template <class Interface, class Object>
i_unknown_t* side_of(Object& object) {
    return static_cast<Interface*>(&object);
}

/// `query_interface` over the answers of a class, tried in their order; see `i_unknown_t` for what becomes of the slot.
/// An interface derives from `i_unknown_t` alone, so its pointer and that of its base are one and the same.
template <class Answers>
bool answer_query(Answers const& answers, guid_t const& iid, void* out) {
    i_unknown_t* pointer = nullptr;
    std::memcpy(&pointer, out, sizeof pointer);
    if (pointer != nullptr) {
        pointer->release();
        pointer = nullptr;
        std::memcpy(out, &pointer, sizeof pointer);
    }
    auto const matches = [&](answer_t const& a) {
        pointer = a.iid == iid ? a.pointer : nullptr;
        return pointer != nullptr;
    };
    bool const found = std::apply([&](auto const&... a) { return (matches(a) || ...); }, answers);
    if (found) {
        std::memcpy(out, &pointer, sizeof pointer);
        pointer->add_ref();
    }
    return found;
}

/// The three operations of `i_unknown_t` for a class `Object` that counts its own references.
///
/// `Object` derives from `counted_t<Object, its interfaces...>`, befriends `object_access` and has
/// - `std::int32_t ref_count = 0`, which starts at 0: the first `iptr` makes it 1,
/// - `answers()`, which gives a `std::array` of `answer_t`.
/// It must not put an `iptr` on itself in its constructor or destructor, since the count would pass 0 there.
/// Writers of classes use it through `aggregatable_t` or `flat_t`.
template <class Object, class... Interfaces>
class counted_t : public Interfaces... {
public:
    bool query_interface(guid_t const& iid, void* out) override {
        return answer_query(object_access::answers(object()), iid, out);
    }

    std::int32_t add_ref() override { return atomic_increment(object_access::ref_count(object())); }

    // The object isn't touched after the decrement, since another thread may have destroyed it by then.
    std::int32_t release() override {
        std::int32_t const count = atomic_decrement(object_access::ref_count(object()));
        if (count == 0) {
            destroy(static_cast<std::tuple_element_t<0, std::tuple<Interfaces...>>*>(this));
        }
        return count;
    }

private:
    Object& object() { return static_cast<Object&>(*this); }
};

}  // namespace velum
