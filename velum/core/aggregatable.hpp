#pragma once

#include <velum/core/counted.hpp>
#include <velum/core/guid.hpp>
#include <velum/core/interface_ids.hpp>
#include <velum/core/iptr.hpp>
#include <velum/core/unknown.hpp>

#include <cstdint>
#include <type_traits>
#include <utility>

namespace velum {

// Aggregation
//
// An aggregate is several objects that look like one from outside: an aggregating object A makes an object B within
// itself and hands out the interfaces of B as its own.
//
// Identity. Whoever asks any interface of the aggregate for `iid_unknown` gets one and the same pointer, that of A.
// So every interface of B sends the question on to A, the controlling unknown. A in turn has one way to B that is not
// sent on: the pointer that `create` gave it, the `i_unknown_t` of B itself, which answers for what B alone has.
//
// Who counts. A reference on an interface of B counts on A, since it is A that must live for as long as the interface
// is in use. A reference on B's own `i_unknown_t` counts on B. A holds one such reference and hands it to nobody.
//
// Who outlives whom. B holds no reference on A: the two would keep each other alive for ever. A owns B, so A outlives
// it, and the pointer from B to A is never dangling while B is in use.
//
// So an aggregatable class is two objects in one. The outer one has the count and the operations that are not sent on.
// The nested one, its member `imp`, has the interfaces, the payload and `outer`, where its operations are sent. An
// object that stands alone is its own controlling unknown: `outer` points at the outer object around `imp`, and the
// two counts are the same count.
//
// How A hands out B. A makes B while somebody holds A, never in its own constructor, and keeps the pointer it gets; its
// `query_interface` tries its own answers first and then asks B:
//
//     class host_t : public flat_t<host_t, i_unknown_t> {
//     public:
//         static iptr<i_unknown_t> make() {
//             iptr<host_t> const host(new host_t);
//             basic_string_t::create(host.get(), "title", iid_unknown, &host->title_);
//             return host.get();
//         }
//         bool query_interface(guid_t const& iid, void* out) override {
//             return flat_t::query_interface(iid, out) || (iid == iid_string && title_->query_interface(iid, out));
//         }
//
//     private:
//         friend object_access;
//         iptr<i_unknown_t> title_;
//         std::int32_t ref_count = 0;
//     };
//
// What `create` refuses. A new object with a controlling unknown hands out its own `i_unknown_t` and nothing else: by
// any other interface the caller would get a reference that counts on the caller itself, and B would have none.

/// The nested object of an aggregatable class: interfaces, payload, controlling unknown. A class derives from it and
/// adds the operations of its interfaces, which work on `payload`.
template <class Payload, class... Interfaces>
class nested_t : public Interfaces... {
public:
    using interfaces = interface_list<Interfaces...>;  ///< what the outer object answers for it

    /// Keeps `controlling` as it is, without a reference, and makes the payload from `arguments`.
    template <class... Arguments>
    explicit nested_t(i_unknown_t* controlling, Arguments&&... arguments)
        : payload(std::forward<Arguments>(arguments)...), outer(controlling) {}

    nested_t(nested_t const&) = default;
    nested_t(nested_t&&) noexcept(std::is_nothrow_move_constructible_v<Payload>) = default;
    ~nested_t() override = default;

    /// Takes the controlling unknown of `other` too. A payload with `drop()` gives up what it holds before it takes
    /// anything; any other stays as it was when the copy fails. Assigning an object to itself changes nothing.
    /// @{
    nested_t& operator=(nested_t const& other) {
        if (this != &other) {
            drop_payload();
            payload = Payload(other.payload);
            outer = other.outer;
        }
        return *this;
    }

    nested_t& operator=(nested_t&& other) noexcept(std::is_nothrow_move_assignable_v<Payload>) {
        if (this != &other) {
            drop_payload();
            payload = std::move(other.payload);
            outer = other.outer;
        }
        return *this;
    }

    /// @}

    /// Sent on to the controlling unknown.
    /// @{
    bool query_interface(guid_t const& iid, void* out) override { return outer->query_interface(iid, out); }
    std::int32_t add_ref() override { return outer->add_ref(); }
    std::int32_t release() override { return outer->release(); }
    /// @}

    [[no_unique_address]] Payload payload;  ///< what the class keeps

    /// The controlling unknown, without a reference.
    i_unknown_t* outer;

private:
    void drop_payload() {
        if constexpr (requires { payload.drop(); }) {
            payload.drop();
        }
    }
};

/// The outer object of an aggregatable class: identity, count and the ways to make one.
///
/// `Object` derives from `aggregatable_t<Object>`, befriends `object_access` and has, in this order, its nested object
/// `imp` and `std::int32_t ref_count = 0`; further a constructor whose first argument, the controlling unknown, goes to
/// `imp` as it is, even null. It answers `iid_unknown` and the interfaces of `imp`. Copies and moves go member by
/// member, `outer` and `ref_count` included: they are for objects that no `iptr` holds.
template <class Object>
class aggregatable_t : public counted_t<Object, i_unknown_t> {
public:
    /// For `make`: an object that is its own controlling unknown. `arguments` are those of the constructor behind the
    /// first.
    template <class... Arguments>
    static iptr<Object> make_alone(Arguments&&... arguments) {
        return make(nullptr, std::forward<Arguments>(arguments)...);
    }

protected:
    /// The side that stands for `iid`, or null; for `query_interface`.
    i_unknown_t* find_side(guid_t const& iid) {
        auto& imp = object_access::nested(this->object());
        return iid == detail::required_iid_of<i_unknown_t>()
                   ? this
                   : std::remove_reference_t<decltype(imp)>::interfaces::find(imp, iid);
    }

    /// Makes an object and asks it for `iid` into the slot `out`. False when it doesn't have the interface; false, with
    /// the slot untouched, when `outer` isn't null and `iid` isn't `iid_unknown`.
    template <class... Arguments>
    static bool create_object(iptr<i_unknown_t> const& outer, guid_t const& iid, void* out, Arguments&&... arguments);

    /// Makes an object for a `deserialize_function`. Always true.
    template <class... Arguments>
    static bool rebuild_object(iptr<i_unknown_t> const& outer, iptr<i_unknown_t>& out, Arguments&&... arguments);

private:
    template <class... Arguments>
    static iptr<Object> make(iptr<i_unknown_t> const& outer, Arguments&&... arguments);
};

template <class Object>
template <class... Arguments>
iptr<Object> aggregatable_t<Object>::make(iptr<i_unknown_t> const& outer, Arguments&&... arguments) {
    iptr<Object> const object = object_access::make<Object>(outer.get(), std::forward<Arguments>(arguments)...);
    if (!outer) {
        object_access::control(*object, object.get());
    }
    return object;
}

template <class Object>
template <class... Arguments>
bool aggregatable_t<Object>::create_object(iptr<i_unknown_t> const& outer, guid_t const& iid, void* out,
                                           Arguments&&... arguments) {
    if (outer && iid != iid_unknown) {
        return false;
    }
    return make(outer, std::forward<Arguments>(arguments)...)->query_interface(iid, out);
}

template <class Object>
template <class... Arguments>
bool aggregatable_t<Object>::rebuild_object(iptr<i_unknown_t> const& outer, iptr<i_unknown_t>& out,
                                            Arguments&&... arguments) {
    return make(outer, std::forward<Arguments>(arguments)...)->query_interface(iid_unknown, &out);
}

}  // namespace velum
