#pragma once

#include "mesh_data.hpp"

#include <tiny_obj_loader.h>

#include <filesystem>
#include <set>
#include <string>
#include <vector>

namespace scene {

struct model_mesh {
    std::string part;      // the object of the model that it belongs to, or the group where there is no object
    std::string material;  // the name of one of the model's materials, empty for none
    mesh_data data;
};

struct model {
    std::string name;
    std::vector<tinyobj::material_t> materials;  // no two of one name
    std::vector<model_mesh> meshes;              // those of one part in a row
    std::set<std::string> notes;                 // what was left out, in words
};

/// Reads a Wavefront OBJ file and the material libraries that it names.
/// Throws `std::runtime_error` for a file that can't be read, holds no faces, or has a face with a corner that isn't
/// there. A material or a library that is missing is only noted.
model load_model(std::filesystem::path const& file);

}  // namespace scene
