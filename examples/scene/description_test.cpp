// What equal descriptions stand for: pairs of graphs, with the number of objects in the left one.

#include "description.hpp"
#include "mesh.hpp"
#include "node.hpp"

#include <velum/boxed/unknown_map.hpp>
#include <velum/values/compare.hpp>

#include <iostream>
#include <vector>

namespace {

using document = velum::iptr<velum::i_unknown_map_t>;
using node = velum::iptr<scene::i_node_t>;
using material = velum::iptr<velum::i_uany_map_t>;

node tree(std::vector<node> const& children, char const* name = "") {
    auto const top = velum::make<scene::node_t>(name).as<scene::i_node_t>();
    for (node const& child : children) {
        top->add(child);
    }
    return top;
}

node leaf(material const& of = {}, char const* name = "") {
    scene::mesh_data data;
    data.name = name;
    auto const mesh = velum::make<scene::mesh_t>(data, of).as<scene::i_mesh_t>();
    return velum::make<scene::node_t>("", mesh).as<scene::i_node_t>();
}

node chain(int length) {
    return length == 1 ? leaf() : tree({chain(length - 1)});
}

material new_material() {
    return velum::uany_map_obj_t::create({});
}

document make(node const& root, material const& a = new_material(), material const& b = new_material()) {
    auto const materials = velum::make<velum::basic_unknown_map_t>().as<velum::i_unknown_map_t>();
    auto const result = velum::make<velum::basic_unknown_map_t>().as<velum::i_unknown_map_t>();
    materials->set("a", a.get());
    materials->set("b", b.get());
    std::vector<boost::any> const names{std::string("a"), std::string("b")};
    result->set("info", velum::uany_map_obj_t::create({{"materials", names}}).get());
    result->set("materials", materials.get());
    result->set("root", root.get());
    return result;
}

// Two meshes, each with one of two materials that are the same but for being two.
document make_pair(int first, int second) {
    material const materials[] = {new_material(), new_material()};
    return make(tree({leaf(materials[first]), leaf(materials[second])}), materials[0], materials[1]);
}

struct row {
    char const* name;
    bool same;
    std::size_t objects;
    document left;
    document right;
};

std::vector<row> rows() {
    node const first = leaf();
    auto const second = velum::make<scene::node_t>("", first->mesh()).as<scene::i_node_t>();
    return {
        {"equal graphs", true, 10, make_pair(0, 1), make_pair(0, 1)},
        {"one material and two", false, 10, make_pair(0, 0), make_pair(0, 1)},
        {"materials the other way round", false, 10, make_pair(0, 1), make_pair(1, 0)},
        {"one mesh and two", false, 9, make(tree({first, second})), make(tree({leaf(), leaf()}))},
        {"a mesh and none", false, 7, make(leaf()), make(tree({}))},
        {"meshes", false, 7, make(leaf({}, "a")), make(leaf({}, "b"))},
        {"names below", false, 7, make(tree({tree({}, "a")})), make(tree({tree({}, "b")}))},
        {"children", false, 8, make(tree({tree({tree({})})})), make(tree({tree({}), tree({})}))},
        {"deep trees", true, 2006, make(chain(2000)), make(chain(2000))},
    };
}

}  // namespace

int main() {
    int mistakes = 0;
    for (row const& row : rows()) {
        auto const left = scene::describe(row.left);
        boost::any const a = left;
        boost::any const b = scene::describe(row.right);
        bool const same = !velum::any_compare(a, b) && !velum::any_compare(b, a);
        if (same != row.same || left.size() != row.objects) {
            std::cerr << row.name << ": " << (same ? "the same, " : "different, ") << left.size() << " objects\n";
            ++mistakes;
        }
    }
    return mistakes == 0 ? 0 : 1;
}
