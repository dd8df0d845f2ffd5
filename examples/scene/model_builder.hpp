#pragma once

#include "model.hpp"

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <tuple>
#include <vector>

namespace scene {

/// Makes meshes of the lines of an OBJ file, which count positions, texture coordinates and normals apart, and may name
/// them before they come.
class model_builder {
public:
    model result;

    void add_position(float x, float y, float z) { positions_.push_back({x, y, z}); }
    void add_normal(float x, float y, float z) { normals_.push_back({x, y, z}); }
    void add_texcoord(float u, float v) { texcoords_.push_back({u, v}); }

    void enter_object(std::string const& name);
    void enter_group(std::string const& name);
    void use_material(std::string const& name);

    /// A face with indices as they stand in the file: from 1, negative ones counted back from the last, 0 for none.
    void add_face(tinyobj::index_t const* corners, int count);

    /// Adds the meshes to `result`. Throws `std::runtime_error` when a corner isn't there.
    void finish();

private:
    using corner = std::array<int, 3>;  // position, texture coordinate, normal: from 0, -1 for none

    struct outline {
        std::vector<std::uint32_t> faces;
        std::vector<corner> corners;
    };

    mesh_data make_mesh(outline const& from) const;
    vertex make_vertex(corner const& at) const;
    std::string known_material(std::string const& name);

    std::vector<std::array<float, 3>> positions_;
    std::vector<std::array<float, 3>> normals_;
    std::vector<std::array<float, 2>> texcoords_;
    std::string object_;
    std::string group_;
    std::string material_;
    std::map<std::tuple<std::string, std::string, std::string>, outline> outlines_;  // object, group and material
    outline* current_ = nullptr;  // null when one of these has changed
};

}  // namespace scene
