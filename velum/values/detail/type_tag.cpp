#include <velum/values/catalogue.hpp>
#include <velum/values/detail/type_tag.hpp>
#include <velum/values/type_key.hpp>

#include <typeinfo>
#include <unordered_map>

namespace velum::detail {
namespace {

using tag_table = std::unordered_map<ustring, int>;

tag_table make_type_tag_table() {
    tag_table tags;
    value_catalogue::for_each(
        [&tags]<class Row>(Row) { tags.emplace(type_key(typeid(typename Row::type)), Row::tag); });
    return tags;
}

}  // namespace

int type_tag(ustring const& type) {
    static tag_table const type_tag_table = make_type_tag_table();
    auto const found = type_tag_table.find(type);
    return found != type_tag_table.end() ? found->second : 0;
}

}  // namespace velum::detail
