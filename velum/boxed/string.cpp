#include <velum/boxed/detail/version_word.hpp>
#include <velum/boxed/string.hpp>
#include <velum/core/clsid_initializer.hpp>
#include <velum/core/detail/class_ids.hpp>

namespace velum {
namespace {

clsid_initializer_t const class_ids;

}  // namespace

basic_string_t::basic_string_t(i_unknown_t* outer, std::string const& value) : imp(outer, value) {}

bool basic_string_t::create(iptr<i_unknown_t> const& outer, std::string const& value, guid_t const& iid, void* out) {
    return create_object(outer, iid, out, value);
}

bool basic_string_t::create_function(iptr<i_unknown_t> const& outer, iptr<i_unknown_map_t> const&, guid_t const& iid,
                                     void* out) {
    return create_object(outer, iid, out, std::string());
}

bool basic_string_t::deserialize_function(iptr<i_unknown_t> const& outer, iptr<i_serializer_t> const&,
                                          iptr<i_unknown_t>& out) {
    return rebuild_object(outer, out, std::string());
}

guid_t basic_string_t::basic_string_imp_t::clsid() const {
    return detail::clsid_basic_string;
}

void basic_string_t::basic_string_imp_t::serialize_obj(iptr<i_serializer_t> const&) const {}

void basic_string_t::basic_string_imp_t::serialize(iptr<i_serializer_t> const& s) const {
    detail::write_version_word(s);
    s->write_string(payload);
}

void basic_string_t::basic_string_imp_t::deserialize(iptr<i_serializer_t> const& s) {
    detail::read_version_word(s);
    s->read_string(payload);
}

}  // namespace velum
