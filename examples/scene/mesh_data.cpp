#include "mesh_data.hpp"

#include "buffers.hpp"
#include "lookup.hpp"

namespace scene {

velum::any_map values_of(mesh_data const& mesh) {
    velum::any_map values{{"name", mesh.name},
                          {"id", mesh.id},
                          {"lowest", mesh.bounds.lowest},
                          {"highest", mesh.bounds.highest},
                          {"has_normals", mesh.has_normals},
                          {"has_texcoords", mesh.has_texcoords}};
    // Assigned and not listed above: a list hands out copies, and these are large.
    values["vertices"] = to_bytes(mesh.vertices);
    values["faces"] = to_bytes(mesh.faces);
    values["corners"] = to_bytes(mesh.corners);
    return values;
}

mesh_data mesh_data_of(velum::any_map const& values) {
    return {.name = lookup<std::string>(values, "name"),
            .id = lookup<velum::guid_t>(values, "id"),
            .bounds = {lookup<vec3>(values, "lowest"), lookup<vec3>(values, "highest")},
            .has_normals = lookup<bool>(values, "has_normals"),
            .has_texcoords = lookup<bool>(values, "has_texcoords"),
            .vertices = from_bytes<vertex>(lookup<velum::byte_vector>(values, "vertices")),
            .faces = from_bytes<std::uint32_t>(lookup<velum::byte_vector>(values, "faces")),
            .corners = from_bytes<std::uint32_t>(lookup<velum::byte_vector>(values, "corners"))};
}

}  // namespace scene
