#pragma once

#include <velum/core/aggregatable.hpp>
#include <velum/core/any.hpp>
#include <velum/core/class_record.hpp>
#include <velum/core/counted.hpp>
#include <velum/core/flat.hpp>
#include <velum/core/guid.hpp>
#include <velum/core/i_serializable.hpp>
#include <velum/core/i_serializer.hpp>
#include <velum/core/i_unknown_map.hpp>
#include <velum/core/iptr.hpp>
#include <velum/core/unknown.hpp>

#include <concepts>
#include <cstdint>
#include <map>
#include <string>
#include <type_traits>
#include <utility>

namespace velum {

// A class in a few lines
//
//     class note_t : public velum::implements<note_t, i_note_t, velum::i_serializable_t> {
//     public:
//         static constexpr velum::guid_t class_id{"{3F0C6A52-8D1E-4B97-A6C4-5E2B90D7F118}"};
//         static constexpr char const* class_name = "note";
//
//         ... the operations of i_note_t, `serialize` and `deserialize` ...
//     };
//
//     factory->register_class(note_t::class_info());
//     auto const note = velum::make<note_t>();
//
// The class gets `query_interface` over its interfaces and `iid_unknown`, the counts, `create_function`,
// `deserialize_function` and `class_info`, and, if it is serializable, `clsid` and an empty `serialize_obj`. It is made
// by its default constructor, but for two cases:
// - `create_function` uses a constructor from `iptr<i_unknown_map_t> const&`, the construction parameters, if there is
//   one. They may be null.
// - `deserialize_function` uses a constructor from `iptr<i_serializer_t> const&` if there is one. It reads the
//   construction stage, and the class writes that in a `serialize_obj` of its own.
// What is missing is an error of the compiler that names it. Objects can't be copied or moved.

namespace detail {

template <class Object>
constexpr guid_t const& class_id_of() {
    static_assert(
        requires {
            { Object::class_id } -> std::same_as<guid_t const&>;
        },
        "the class has no identifier: it needs a public `static constexpr velum::guid_t class_id`");
    static_assert(Object::class_id != guid_t{}, "the identifier of the class, `class_id`, is all zero");
    return Object::class_id;
}

/// The record of a class, complete for `register_class`.
template <class Object>
std::map<std::string, boost::any> class_record_of() {
    static_assert(
        requires { std::string(Object::class_name); },
        "the class has no name: it needs a public `static constexpr char const* class_name`");
    return {{"clsid", class_id_of<Object>()},
            {"class_name", std::string(Object::class_name)},
            {"create_function", create_function_t(&Object::create_function)},
            {"deserialize_function", deserialize_function_t(&Object::deserialize_function)},
            {"supported_interfaces", object_access::identifiers<Object>()}};
}

/// `Base` with what every serializable class does alike.
template <class Object, class Base>
class with_class_id : public Base {
public:
    using Base::Base;

    guid_t clsid() const override { return class_id_of<Object>(); }
    void serialize_obj(iptr<i_serializer_t> const& /*s*/) const override {}
};

template <class Object, class Base>
using with_class_id_if_serializable =
    std::conditional_t<Base::interfaces::template contains<i_serializable_t>, with_class_id<Object, Base>, Base>;

}  // namespace detail

/// The base of a class `Object` with these interfaces, which can't be aggregated.
template <class Object, class... Interfaces>
class implements : public detail::with_class_id_if_serializable<Object, flat_t<Object, Interfaces...>> {
public:
    implements() = default;
    implements(implements const&) = delete;
    implements& operator=(implements const&) = delete;
    ~implements() override = default;

    /// The record of the class, complete for `register_class`.
    static std::map<std::string, boost::any> class_info() { return detail::class_record_of<Object>(); }

private:
    friend object_access;

    std::int32_t ref_count = 0;
};

namespace detail {

/// The outer object around a nested object of class `Nested`, for `implements_aggregatable`.
template <class Nested>
class outer_of final : public aggregatable_t<outer_of<Nested>> {
public:
    template <class... Arguments>
    explicit outer_of(i_unknown_t* controlling, Arguments&&... arguments) : imp(std::forward<Arguments>(arguments)...) {
        object_access::set_controlling(imp, controlling);
    }

    using aggregatable_t<outer_of>::create_object;
    using aggregatable_t<outer_of>::rebuild_object;

private:
    friend object_access;

    Nested imp;
    std::int32_t ref_count = 0;
};

struct nothing {};

}  // namespace detail

/// The base of a class `Object` with these interfaces that can be aggregated: of the nested object, in the words of
/// aggregatable.hpp, around which an outer one is made. For the class itself all is as with `implements`. It must not
/// take references on itself before its constructor is done.
template <class Object, class... Interfaces>
class implements_aggregatable
    : public detail::with_class_id_if_serializable<Object, nested_t<detail::nothing, Interfaces...>> {
    using base = detail::with_class_id_if_serializable<Object, nested_t<detail::nothing, Interfaces...>>;
    using outer_of = detail::outer_of<Object>;

public:
    implements_aggregatable() : base(nullptr) {}
    implements_aggregatable(implements_aggregatable const&) = delete;
    implements_aggregatable& operator=(implements_aggregatable const&) = delete;
    ~implements_aggregatable() override = default;

    /// Makes an object under the controlling unknown `outer`, or null, and asks it for `iid` into the slot `out`. False
    /// when it doesn't have the interface; false, with the slot untouched, when `outer` isn't null and `iid` isn't
    /// `iid_unknown`.
    static bool create_function(iptr<i_unknown_t> const& outer, iptr<i_unknown_map_t> const& params, guid_t const& iid,
                                void* out) {
        return object_access::pass_if_taken<Object>(
            params, [&](auto const&... argument) { return outer_of::create_object(outer, iid, out, argument...); });
    }

    /// Makes an object whose content `deserialize` reads. Always true.
    static bool deserialize_function(iptr<i_unknown_t> const& outer, iptr<i_serializer_t> const& s,
                                     iptr<i_unknown_t>& out) {
        return object_access::pass_if_taken<Object>(
            s, [&](auto const&... argument) { return outer_of::rebuild_object(outer, out, argument...); });
    }

    /// The record of the class, complete for `register_class`.
    static std::map<std::string, boost::any> class_info() { return detail::class_record_of<Object>(); }

    /// For `make`.
    template <class... Arguments>
    static iptr<Object> make_alone(Arguments&&... arguments) {
        return &object_access::nested(*outer_of::make_alone(std::forward<Arguments>(arguments)...));
    }
};

}  // namespace velum
