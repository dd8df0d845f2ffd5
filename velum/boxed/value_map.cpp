#include <velum/boxed/detail/version_word.hpp>
#include <velum/boxed/value_map.hpp>
#include <velum/core/clsid_initializer.hpp>
#include <velum/core/detail/class_ids.hpp>
#include <velum/wire/read.hpp>
#include <velum/wire/write.hpp>

#include <utility>

namespace velum {
namespace {

clsid_initializer_t const class_ids;

}  // namespace

uany_map_obj_t::uany_map_obj_t() = default;
uany_map_obj_t::uany_map_obj_t(uany_map const& map) : payload(map) {}

uany_map_obj_t::uany_map_obj_t(uany_map_obj_t const&) = default;
uany_map_obj_t::uany_map_obj_t(uany_map_obj_t&&) noexcept = default;
uany_map_obj_t& uany_map_obj_t::operator=(uany_map_obj_t const&) = default;
uany_map_obj_t::~uany_map_obj_t() = default;

// A map that is moved to itself would lose its entries.
uany_map_obj_t& uany_map_obj_t::operator=(uany_map_obj_t&& other) noexcept {
    if (this != &other) {
        payload = std::move(other.payload);
        ref_count = other.ref_count;
    }
    return *this;
}

iptr<i_uany_map_t> uany_map_obj_t::create(uany_map const& map) {
    return new uany_map_obj_t(map);
}

guid_t uany_map_obj_t::clsid() const {
    return detail::clsid_uany_map_obj;
}

void uany_map_obj_t::serialize_obj(iptr<i_serializer_t> const&) const {}

void uany_map_obj_t::serialize(iptr<i_serializer_t> const& s) const {
    detail::write_version_word(s);
    velum::serialize(payload, s);
}

void uany_map_obj_t::deserialize(iptr<i_serializer_t> const& s) {
    detail::read_version_word(s);
    velum::deserialize(payload, s);
}

}  // namespace velum
