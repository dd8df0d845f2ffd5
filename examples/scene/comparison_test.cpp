// What `compare` takes for the same, each pair of values in a map and in a list within it.

#include "comparison.hpp"

#include <velum/values/catalogue.hpp>

#include <iostream>
#include <limits>
#include <vector>

namespace {

using vec3 = math::vec<float, 3, math::use_simd_tag>;
using velum::any_map;
using velum::uany_map;
using velum::ustring;

struct row {
    char const* name;
    bool same;
    boost::any left;
    boost::any right;
};

velum::affine_space3 space(float last) {
    return {{vec3{1, 0, 0}, vec3{0, 1, 0}, vec3{0, 0, 1}}, vec3{1, 2, last}};
}

std::vector<row> rows() {
    float const nan = std::numeric_limits<float>::quiet_NaN();
    using maps = std::vector<any_map>;
    return {
        {"a number and itself", true, 1, 1},
        {"two numbers", false, 1, 2},
        {"two types", false, 1, 1LL},
        {"a NaN and itself", true, nan, nan},
        {"NaNs of two signs", false, nan, -nan},
        {"zeros of two signs", false, 0.0, -0.0},
        {"truths", false, true, false},
        {"texts with zero bytes", false, std::string("a\0b", 3), std::string("a\0c", 3)},
        {"interned texts", false, ustring("a"), ustring("b")},
        {"an interned text and itself", true, ustring("a"), ustring(std::string("a"))},
        {"the last byte of a buffer", false, velum::byte_vector{1, 2}, velum::byte_vector{1, 3}},
        {"lengths of a buffer", false, velum::byte_vector{1, 2}, velum::byte_vector{1}},
        {"vectors with a NaN", true, vec3{1, nan, 0}, vec3{1, nan, 0}},
        {"the last of three", false, vec3{1, 2, 3}, vec3{1, 2, 4}},
        {"spaces", true, space(3), space(3)},
        {"origins of a space", false, space(3), space(4)},
        {"a map and one with more", false, any_map{{"a", 1}}, any_map{{"a", 1}, {"b", 1}}},
        {"other keys", false, any_map{{"a", 1}}, any_map{{"b", 1}}},
        {"maps with interned keys", true, uany_map{{"b", 1}, {"a", 2}}, uany_map{{"a", 2}, {"b", 1}}},
        {"the two kinds of maps", false, any_map{{"a", 1}}, uany_map{{"a", 1}}},
        {"lists of maps", false, maps{{{"a", 1}}, {{"a", 1}}}, maps{{{"a", 1}}, {{"a", 2}}}},
        {"nothing", false, {}, {}},
    };
}

int mistakes(row const& row) {
    using list = std::vector<boost::any>;
    auto const nested = [](boost::any const& value) {
        return any_map{{"list", list{std::string("first"), value}}, {"text", std::string("last")}};
    };
    scene::comparison const found = scene::compare(nested(row.left), nested(row.right));
    bool const right = found.same == row.same && found.difference.starts_with(row.same ? "" : "/list/1") &&
                       found.difference.empty() == row.same;
    if (!right) {
        std::cerr << row.name << ": " << (found.same ? "the same" : "different at " + found.difference) << '\n';
    }
    return right ? 0 : 1;
}

}  // namespace

int main() {
    int count = 0;
    for (row const& row : rows()) {
        count += mistakes(row);
    }
    return count == 0 ? 0 : 1;
}
