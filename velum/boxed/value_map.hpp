#pragma once

#include <velum/core/any.hpp>
#include <velum/core/api.hpp>
#include <velum/core/flat.hpp>
#include <velum/core/i_serializable.hpp>
#include <velum/core/i_serializer.hpp>
#include <velum/core/i_unknown_map.hpp>
#include <velum/core/interface_ids.hpp>
#include <velum/core/iptr.hpp>
#include <velum/values/any_map.hpp>

#include <cstdint>
#include <map>
#include <string>

namespace velum {

/// A value map in an object (`iid_uany_map`). It is read-only, so any number of threads may read it.
class VELUM_API i_uany_map_t : public i_unknown_t {
public:
    /// The map itself, valid as long as a reference on the object is held.
    virtual std::map<ustring, boost::any> const& map() const = 0;
};

template <>
inline constexpr guid_t iid_of<i_uany_map_t>{"{D2873496-E7B0-4909-AB10-C315479EFD64}"};

/// The boxed value map. It answers `iid_unknown`, `iid_serializable` and `iid_uany_map`, can't be aggregated, and is
/// stored as the word 0x00010000 and the map. Only `deserialize` changes it: it merges what it reads into the map. A
/// new factory doesn't know the class; `register_class(uany_map_obj_t::_class_info)` tells it.
class VELUM_API uany_map_obj_t : public flat_t<uany_map_obj_t, i_uany_map_t, i_serializable_t> {
public:
    /// Member by member, the count included: only for objects that no `iptr` holds.
    /// These copy the count too, so they are only for objects that no `iptr` holds. A move leaves an empty map.
    /// @{
    uany_map_obj_t(uany_map_obj_t const&);
    uany_map_obj_t(uany_map_obj_t&&) noexcept;
    uany_map_obj_t& operator=(uany_map_obj_t const&);
    uany_map_obj_t& operator=(uany_map_obj_t&&) noexcept;
    /// @}
    ~uany_map_obj_t() override;

    /// A new object with a copy of `map`.
    static iptr<i_uany_map_t> create(std::map<ustring, boost::any> const& map);

    /// As its interfaces say.
    /// @{
    std::map<ustring, boost::any> const& map() const override { return payload; }
    guid_t clsid() const override;
    void serialize_obj(iptr<i_serializer_t> const& s) const override;
    void serialize(iptr<i_serializer_t> const& s) const override;
    void deserialize(iptr<i_serializer_t> const& s) override;
    /// @}

    /// The class identifier.
    static guid_t const _clsid;

    /// "clsid", "create_function" and "deserialize_function": complete for registration in a factory.
    static std::map<std::string, boost::any> const _class_info;

protected:
    /// For classes that derive from it.
    /// @{
    uany_map_obj_t();
    explicit uany_map_obj_t(std::map<ustring, boost::any> const& map);
    /// @}

private:
    friend object_access;

    std::map<ustring, boost::any> payload;
    std::int32_t ref_count = 0;
};

}  // namespace velum
