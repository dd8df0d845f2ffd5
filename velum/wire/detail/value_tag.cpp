#include <velum/values/catalogue.hpp>
#include <velum/values/type_key.hpp>
#include <velum/wire/detail/value_tag.hpp>

#include <sstream>
#include <typeinfo>
#include <unordered_map>

namespace velum::detail {
namespace {

using tag_table = std::unordered_map<ustring, int>;

tag_table make_value_tag_table() {
    tag_table tags;
    value_catalogue::for_each(
        [&tags]<class Row>(Row) { tags.emplace(type_key(typeid(typename Row::type)), Row::tag); });
    return tags;
}

}  // namespace

int value_tag(boost::any const& value) {
    static tag_table const value_tag_table = make_value_tag_table();
    ustring const type = type_key(value.type());
    auto const found = value_tag_table.find(type);
    if (found == value_tag_table.end()) {
        throw unknown_type(type);
    }
    return found->second;
}

void throw_unknown_tag(std::uint32_t tag) {
    std::ostringstream detail;  // its digits follow the global locale
    detail << "type_id<" << tag << '>';
    throw unknown_type(detail.str());
}

}  // namespace velum::detail
