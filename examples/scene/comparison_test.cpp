// What `compare` takes for the same: pairs of values in a map and in a list within it, and pairs of graphs.

#include "comparison.hpp"
#include "mesh.hpp"
#include "node.hpp"

#include <velum/boxed/unknown_map.hpp>
#include <velum/values/catalogue.hpp>

#include <iostream>
#include <limits>
#include <vector>

namespace {

using scene::vec3;
using velum::any_map;
using velum::uany_map;
using velum::ustring;
using document = velum::iptr<velum::i_unknown_map_t>;
using material = velum::iptr<velum::i_uany_map_t>;
using node = velum::iptr<scene::i_node_t>;

struct value_row {
    char const* name;
    bool same;
    boost::any left;
    boost::any right;
};

velum::affine_space3 space(float last) {
    return {{vec3{1, 0, 0}, vec3{0, 1, 0}, vec3{0, 0, 1}}, vec3{1, 2, last}};
}

std::vector<value_row> value_rows() {
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

node tree(std::vector<node> const& children, char const* name = "") {
    node const top = scene::node_t::create(name);
    for (node const& child : children) {
        top->add(child);
    }
    return top;
}

node leaf(material const& of = {}, float x = 0) {
    scene::mesh_data data;
    data.bounds.lowest = {x, 0, 0};
    return scene::node_t::create("", scene::mesh_t::create(data, of));
}

document make(uany_map info, node const& root, std::vector<material> const& materials = {}) {
    document all;
    velum::basic_unknown_map_t::create(nullptr, velum::iid_unknown_map, &all);
    document result;
    velum::basic_unknown_map_t::create(nullptr, velum::iid_unknown_map, &result);
    std::vector<boost::any> names;
    for (material const& each : materials) {
        std::string const name = std::to_string(names.size());
        all->set(name, each.get());
        names.emplace_back(name);
    }
    info["materials"] = names;
    result->set("info", velum::uany_map_obj_t::create(info).get());
    result->set("materials", all.get());
    result->set("root", root.get());
    return result;
}

struct graph_row {
    char const* name;
    char const* difference;  // empty when they are the same
    document left;
    document right;
};

std::vector<graph_row> graph_rows() {
    auto const make_pair = [](auto const& make_leaves) {
        auto const iron = [] { return velum::uany_map_obj_t::create({{"name", std::string("iron")}}); };
        std::vector<material> const two{iron(), iron()};
        return make({}, tree(make_leaves(two[0], two[1])), two);
    };
    using leaves = std::vector<node>;
    document const one_for_both = make_pair([](auto a, auto) { return leaves{leaf(a), leaf(a)}; });
    document const one_each = make_pair([](auto a, auto b) { return leaves{leaf(a), leaf(b)}; });
    document const again = make_pair([](auto a, auto b) { return leaves{leaf(a), leaf(b)}; });
    document const crossed = make_pair([](auto a, auto b) { return leaves{leaf(b), leaf(a)}; });
    node const first = leaf();
    document const same_mesh = make({}, tree({first, scene::node_t::create("", first->mesh())}));
    node const stray = leaf();
    document const without_parent = make({}, tree({stray}));
    stray->set_parent(nullptr);
    return {
        {"equal graphs", "", one_each, again},
        {"a graph and itself", "", one_for_both, one_for_both},
        {"one material and two", "/root/1/mesh/material", one_for_both, one_each},
        {"two materials and one", "/root/1/mesh/material", one_each, one_for_both},
        {"materials the other way round", "/root/0/mesh/material", one_each, crossed},
        {"one mesh and two", "/root/1/mesh", same_mesh, make({}, tree({leaf(), leaf()}))},
        {"two meshes and one", "/root/1/mesh", make({}, tree({leaf(), leaf()})), same_mesh},
        {"a mesh and none", "/root/0/mesh", make({}, tree({leaf()})), make({}, tree({tree({})}))},
        {"bounds of a mesh", "/root/0/mesh/lowest", make({}, tree({leaf({}, 1)})), make({}, tree({leaf({}, 2)}))},
        {"a child more", "/root/children", make({}, tree({leaf()})), make({}, tree({leaf(), leaf()}))},
        {"names below", "/root/0/0/name", make({}, tree({tree({tree({}, "a")})})),
         make({}, tree({tree({tree({}, "b")})}))},
        {"a child that doesn't know its parent", "/root", without_parent, without_parent},
        {"no root", "/root", make({}, tree({})), make({}, nullptr)},
    };
}

bool check(char const* name, scene::comparison const& found, bool same, std::string const& difference) {
    bool const right =
        found.same == same && found.difference.starts_with(difference) && found.difference.empty() == same;
    if (!right) {
        std::cerr << name << ": " << (found.same ? "the same" : "different at " + found.difference) << '\n';
    }
    return right;
}

bool check(value_row const& row) {
    using list = std::vector<boost::any>;
    auto const nested = [](boost::any const& value) {
        return make({{"map", any_map{{"list", list{std::string("first"), value}}, {"text", std::string("last")}}}}, {});
    };
    scene::comparison const found = scene::compare(nested(row.left), nested(row.right));
    return check(row.name, found, row.same, row.same ? "" : "/info/map/list/1");
}

bool check(graph_row const& row) {
    bool const same = *row.difference == 0;
    return check(row.name, scene::compare(row.left, row.right), same, row.difference);
}

}  // namespace

int main() {
    int mistakes = 0;
    for (value_row const& row : value_rows()) {
        mistakes += check(row) ? 0 : 1;
    }
    for (graph_row const& row : graph_rows()) {
        mistakes += check(row) ? 0 : 1;
    }
    return mistakes == 0 ? 0 : 1;
}
