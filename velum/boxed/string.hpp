#pragma once

#include <velum/core/aggregatable.hpp>
#include <velum/core/any.hpp>
#include <velum/core/api.hpp>
#include <velum/core/i_serializable.hpp>
#include <velum/core/i_serializer.hpp>
#include <velum/core/i_unknown_map.hpp>
#include <velum/core/interface_ids.hpp>
#include <velum/core/iptr.hpp>

#include <cstdint>
#include <map>
#include <string>

namespace velum {

/// A string in an object (`iid_string`). One thread at a time may change it, and nobody may read it meanwhile.
class VELUM_API i_string_t : public i_unknown_t {
public:
    /// The string itself, valid as long as a reference on the object is held.
    virtual std::string& string() = 0;
    virtual std::string const& string() const = 0;  ///< the same
};

template <>
inline constexpr guid_t iid_of<i_string_t>{"{7DBD8CA5-357A-4c94-ACB8-EFDC52A200F9}"};

/// The boxed string: any bytes, NUL included. It answers `iid_unknown`, `iid_string` and `iid_serializable`, can be
/// aggregated, and is stored as the word 0x00010000, a 32-bit length and the bytes.
class VELUM_API basic_string_t : public aggregatable_t<basic_string_t> {
public:
    /// For `create`; keeps `outer` as it is, without a reference.
    basic_string_t(i_unknown_t* outer, std::string const& value);

    /// Makes a boxed string under the controlling unknown `outer`, or null, and asks it for `iid` into the slot `out`.
    /// False when it doesn't have the interface; false, with the slot untouched, when `outer` isn't null and `iid`
    /// isn't `iid_unknown`.
    static bool create(iptr<i_unknown_t> const& outer, std::string const& value, guid_t const& iid, void* out);

    /// The same with an empty string. Reads nothing from `params`.
    static bool create_function(iptr<i_unknown_t> const& outer, iptr<i_unknown_map_t> const& params, guid_t const& iid,
                                void* out);

    /// Makes an empty boxed string, whose content `deserialize` reads. Always true.
    static bool deserialize_function(iptr<i_unknown_t> const& outer, iptr<i_serializer_t> const& s,
                                     iptr<i_unknown_t>& out);

    /// "class_name" and "supported_interfaces".
    static std::map<std::string, boost::any> const class_info;

private:
    friend object_access;

    class VELUM_API basic_string_imp_t : public nested_t<std::string, i_string_t, i_serializable_t> {
    public:
        using nested_t::nested_t;

        std::string& string() override { return payload; }
        std::string const& string() const override { return payload; }

        guid_t clsid() const override;
        void serialize_obj(iptr<i_serializer_t> const& s) const override;
        void serialize(iptr<i_serializer_t> const& s) const override;
        void deserialize(iptr<i_serializer_t> const& s) override;
    };

    basic_string_imp_t imp;
    std::int32_t ref_count = 0;
};

}  // namespace velum
