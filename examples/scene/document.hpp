#pragma once

#include "i_node.hpp"

#include <velum/boxed/value_map.hpp>
#include <velum/core/i_unknown_map.hpp>

#include <cstddef>
#include <string>
#include <vector>

namespace scene {

// The scene as a graph of objects. Whatever it leads to by two ways is stored once, and comes back as one object:
//
//     document     object map: "info", "materials", "root" and, if there is one, "note"
//       info       value map, see below
//       materials  object map: a value map under the name of each material, which the meshes with it have too
//       note       of a class that a module brings: a text (`i_string_t`) with plain values (`i_uany_map_t`)
//       root       node, named like the model, without a mesh
//         child    node for an object of the model, without a mesh
//           child  node for the part of that object that has one material and group, with its mesh
//
// The info has
//
//     kind       string            "scene": a stored graph doesn't say on its own what it is
//     version    int               2
//     name       string
//     counts     any_map           materials, meshes, nodes: int; vertices, faces: long long
//     bounds     affine_space3     takes the cube from (0 0 0) to (1 1 1) to the box around all vertices
//     materials  vector<any>       their names, strings: an object map doesn't tell its keys
//
// and a material
//
//     name                        string
//     diffuse, specular, glow     float vector of 3
//     shininess, opacity          float
//     pictures                    any_map: a ustring under the channel's name, for each channel that has one

/// What a document has under its keys, null for what is missing or of another kind.
struct document_parts {
    explicit document_parts(velum::iptr<velum::i_unknown_map_t> const& document);

    velum::iptr<velum::i_uany_map_t> info;
    velum::iptr<velum::i_unknown_map_t> materials;
    velum::iptr<velum::i_unknown_t> note;
    velum::iptr<i_node_t> root;

    /// What stands under `name` in `materials`.
    velum::iptr<velum::i_uany_map_t> material(std::string const& name) const;

    /// Throws `std::runtime_error` where `info` has no list of names.
    std::vector<std::string> material_names() const;
};

/// Gives the number of objects that a document has by the above. Throws `std::runtime_error`, `velum::key_not_found`
/// among them, unless all of it is there: every value of its type, every count right, every place within what it points
/// into, and the nodes a tree in which each knows its parent. Other objects in an object map can't be seen from
/// outside; whoever reads a document counts what it brought.
std::size_t check_document(velum::iptr<velum::i_unknown_map_t> const& document);

}  // namespace scene
