#pragma once

#include "bounds.hpp"

#include <velum/core/guid.hpp>
#include <velum/values/any_map.hpp>

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace scene {

/// What stands at a corner of a face, as it lies in a stored buffer.
struct vertex {
    std::array<float, 3> position;
    std::array<float, 3> normal;    // zero where the model has none
    std::array<float, 2> texcoord;  // zero where the model has none
};
static_assert(sizeof(vertex) == 8 * sizeof(float));

/// The faces of one object and group that have one material.
struct mesh_data {
    std::string name;
    velum::guid_t id;  // see `mesh_identifier`
    box bounds;
    bool has_normals = true;
    bool has_texcoords = true;
    std::vector<vertex> vertices;
    std::vector<std::uint32_t> faces;    // how many corners each face has
    std::vector<std::uint32_t> corners;  // their places in `vertices`, face after face
};

/// The data as it is stored:
///
///     name                        string
///     id                          guid_t
///     lowest, highest             float vectors of 3: the corners of its box
///     has_normals, has_texcoords  bool
///     vertices                    byte_vector of `vertex`
///     faces, corners              byte_vector of 32-bit numbers
velum::any_map values_of(mesh_data const& mesh);

/// The way back. Throws `std::runtime_error` for a value that is missing or of another type, and for a buffer that ends
/// within an element.
mesh_data mesh_data_of(velum::any_map const& values);

}  // namespace scene
