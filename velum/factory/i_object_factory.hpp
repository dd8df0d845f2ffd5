#pragma once

#include <velum/core/any.hpp>
#include <velum/core/api.hpp>
#include <velum/core/class_record.hpp>
#include <velum/core/guid.hpp>
#include <velum/core/i_serializer.hpp>
#include <velum/core/i_unknown_map.hpp>
#include <velum/core/iptr.hpp>
#include <velum/core/unknown.hpp>

#include <map>
#include <set>
#include <stdexcept>
#include <string>

namespace velum {

/// Makes objects by class identifier (`iid_object_factory`).
///
/// Whoever owns a class registers it; nothing is ever unregistered, so a module must stay loaded for as long as a
/// factory can call its functions. Any number of threads may make objects while none registers a class.
class VELUM_API i_object_factory_t : public i_unknown_t {
public:
    /// "object already registered in this factory"
    class VELUM_API class_already_registered : public std::runtime_error {
    public:
        class_already_registered();
        class_already_registered(class_already_registered const&) = default;
        class_already_registered& operator=(class_already_registered const&) = default;
        ~class_already_registered() override;
    };

    /// "object not registered in this factory"
    class VELUM_API class_not_registered : public std::runtime_error {
    public:
        class_not_registered();
        class_not_registered(class_not_registered const&) = default;
        class_not_registered& operator=(class_not_registered const&) = default;
        ~class_not_registered() override;
    };

    /// Registers a class by its record, which must have "clsid", "create_function" and "deserialize_function": throws
    /// `key_not_found` or `boost::bad_any_cast` for the first that is missing or not of its very type (see
    /// class_record.hpp), or as the form below. An "init_function" of another type is taken for none.
    virtual void register_class(std::map<std::string, boost::any> const& class_info) = 0;

    /// Registers a class by its parts, with copies of them all, and then calls `init` unless it is empty. What `init`
    /// throws passes through, and the class stays registered. Throws `class_already_registered`, having changed and
    /// called nothing, when there is one under `clsid`.
    virtual void register_class(guid_t const& clsid, create_function_t const& create,
                                std::map<std::string, boost::any> const& class_info,
                                deserialize_function_t const& deserialize, init_function_t const& init) = 0;

    /// Calls the class's `create_function_t` and gives its result. Throws `class_not_registered`, or
    /// `boost::bad_function_call` when the class has an empty function.
    virtual bool create_object(guid_t const& clsid, iptr<i_unknown_t> const& outer, iptr<i_unknown_map_t> const& params,
                               guid_t const& iid, void* out) = 0;

    /// Calls the class's `deserialize_function_t`, which builds an object and reads its construction stage, and gives
    /// its result. Throws as `create_object`.
    virtual bool deserialize_object(guid_t const& clsid, iptr<i_unknown_t> const& outer,
                                    iptr<i_serializer_t> const& serializer, iptr<i_unknown_t>& out) = 0;

    /// All class identifiers, valid until the next registration.
    virtual std::set<guid_t> const& registered_classes() const = 0;

    /// The record that the class was registered with. Throws `class_not_registered`.
    virtual std::map<std::string, boost::any> const& class_info(guid_t const& clsid) const = 0;
};

template <>
inline constexpr guid_t iid_of<i_object_factory_t>{"{C6291C66-D18B-4277-99D2-9D678A8B1F80}"};

}  // namespace velum
