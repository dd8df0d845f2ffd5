#include "document.hpp"
#include "lookup.hpp"
#include "require.hpp"

#include <velum/boxed/string.hpp>

#include <algorithm>
#include <cstdint>
#include <set>

namespace scene {
namespace {

struct totals {
    std::set<velum::i_unknown_t const*> meshes;
    std::set<velum::i_unknown_t const*> materials;
    std::size_t nodes = 0;
    std::size_t vertices = 0;
    std::size_t faces = 0;
};

// Where every entry is known there is no room for others, which might hold objects.
template <class Map>
void require_size(Map const& map, std::size_t size) {
    require(map.size() == size, "a map has values that don't belong there");
}

void check_material(velum::uany_map const& material, std::string const& name) {
    require(lookup<std::string>(material, "name") == name, "a material is there under the name of another");
    for (char const* const key : {"diffuse", "specular", "glow"}) {
        lookup<vec3>(material, key);
    }
    for (char const* const key : {"shininess", "opacity"}) {
        lookup<float>(material, key);
    }
    auto const& pictures = lookup<velum::any_map>(material, "pictures");
    for (auto const& [channel, picture] : pictures) {
        lookup<velum::ustring>(pictures, channel.c_str());
    }
    require_size(material, 7);
}

void check_mesh(i_mesh_t const& mesh, totals& found) {
    require(!mesh.material() || found.materials.count(mesh.material().get()) != 0,
            "a mesh has a material that isn't among those of the document");
    if (!found.meshes.insert(&mesh).second) {
        return;
    }
    mesh_data const& data = mesh.data();
    require(std::ranges::all_of(data.corners, [&](auto place) { return place < data.vertices.size(); }),
            "a face has a vertex that isn't there");
    std::uint64_t sum = 0;
    for (std::uint32_t const size : data.faces) {
        sum += size;
    }
    require(sum == data.corners.size(), "the faces have more or fewer corners than there are");
    found.vertices += data.vertices.size();
    found.faces += data.faces.size();
}

// Not by recursion, since a stored tree may be deep.
void check_tree(i_node_t const& root, totals& found) {
    require(root.parent() == nullptr && root.stored_parent() == nullptr, "the root has a parent");
    std::vector<i_node_t const*> left{&root};
    while (!left.empty()) {
        i_node_t const& node = *left.back();
        left.pop_back();
        ++found.nodes;
        if (node.mesh()) {
            check_mesh(*node.mesh(), found);
        }
        for (auto const& child : node.children()) {
            require(child->parent() == &node, "a child has another parent");
            left.push_back(child.get());
        }
    }
}

void check_note(velum::iptr<velum::i_unknown_t> const& note) {
    require(note.try_as<velum::i_string_t>() && note.try_as<velum::i_uany_map_t>(),
            "its note has no text or no values");
}

void check_info(velum::uany_map const& info, totals const& found) {
    lookup<std::string>(info, "name");
    lookup<velum::affine_space3>(info, "bounds");
    require_size(info, 6);
    auto const& counts = lookup<velum::any_map>(info, "counts");
    auto const is_right = [&counts]<class T>(char const* key, T, std::size_t count) {
        return lookup<T>(counts, key) == static_cast<T>(count);
    };
    require(is_right("materials", 0, found.materials.size()) && is_right("meshes", 0, found.meshes.size()) &&
                is_right("nodes", 0, found.nodes) && is_right("vertices", 0LL, found.vertices) &&
                is_right("faces", 0LL, found.faces),
            "its counts are wrong");
    require_size(counts, 5);
}

}  // namespace

std::size_t check_document(velum::iptr<velum::i_unknown_map_t> const& document) {
    document_parts const parts(document);
    require(static_cast<bool>(parts.info), "it has no info");
    require(lookup<std::string>(parts.info->map(), "kind") == "scene", "it is of another kind");
    require(lookup<int>(parts.info->map(), "version") == 2, "its version isn't known here");
    require(static_cast<bool>(parts.materials), "it has no map of materials");
    require(static_cast<bool>(parts.root), "it has no root");

    totals found;
    for (std::string const& name : parts.material_names()) {
        auto const material = parts.material(name);
        require(static_cast<bool>(material), "a material isn't there");
        require(found.materials.insert(material.get()).second, "a material is there twice");
        check_material(material->map(), name);
    }
    check_tree(*parts.root, found);
    check_info(parts.info->map(), found);
    if (parts.note) {
        check_note(parts.note);
    }
    std::size_t const others = parts.note ? 4 : 3;  // the document, its info and its materials, and the note
    return others + found.materials.size() + found.nodes + found.meshes.size();
}

}  // namespace scene
