#pragma once

#include <tiny_obj_loader.h>

#include <array>
#include <cstdint>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

namespace scene {

/// What stands at a corner of a face, as it lies in the document's buffers.
struct vertex {
    std::array<float, 3> position;
    std::array<float, 3> normal;    // zero where the model has none
    std::array<float, 2> texcoord;  // zero where the model has none
};
static_assert(sizeof(vertex) == 8 * sizeof(float));

/// The faces of one object and group that have one material.
struct mesh {
    std::string name;
    int material = -1;  // its place in the model's materials, -1 for none
    bool has_normals = true;
    bool has_texcoords = true;
    std::vector<vertex> vertices;
    std::vector<std::uint32_t> faces;    // how many corners each face has
    std::vector<std::uint32_t> corners;  // their places in `vertices`, face after face
};

struct model {
    std::string name;
    std::vector<tinyobj::material_t> materials;
    std::vector<mesh> meshes;
    std::set<std::string> notes;  // what was left out, in words
};

/// Reads a Wavefront OBJ file and the material libraries that it names.
/// Throws `std::runtime_error` for a file that can't be read, holds no faces, or has a face with a corner that isn't
/// there. A material or a library that is missing is only noted.
model load_model(std::filesystem::path const& file);

}  // namespace scene
