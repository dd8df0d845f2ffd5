#include <velum/values/errors.hpp>
#include <velum/values/type_key.hpp>
#include <velum/wire/detail/value_tag.hpp>

#include <sstream>

namespace velum::detail {

void throw_unknown_type(std::type_info const& type) {
    throw unknown_type(type_key(type));
}

void throw_unknown_tag(std::uint32_t tag) {
    std::ostringstream detail;            // its digits follow the global locale
    detail.exceptions(std::ios::badbit);  // or a text without memory would end anywhere
    detail << "type_id<" << tag << '>';
    throw unknown_type(detail.str());
}

}  // namespace velum::detail
