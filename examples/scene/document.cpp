#include "document.hpp"

#include "buffers.hpp"
#include "identifier.hpp"

#include <algorithm>
#include <limits>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace scene {
namespace {

using vec3 = math::vec<float, 3, math::use_simd_tag>;

struct box {
    std::array<float, 3> lowest{infinite, infinite, infinite};
    std::array<float, 3> highest{-infinite, -infinite, -infinite};

    static constexpr float infinite = std::numeric_limits<float>::infinity();

    void take_in(mesh const& mesh) {
        for (vertex const& at : mesh.vertices) {
            for (std::size_t i = 0; i < 3; ++i) {
                lowest[i] = std::min(lowest[i], at.position[i]);
                highest[i] = std::max(highest[i], at.position[i]);
            }
        }
    }
};

vec3 vector_of(std::span<float const, 3> components) {
    return {components[0], components[1], components[2]};
}

velum::affine_space3 transform_to(box const& bounds) {
    auto const size = [&bounds](std::size_t i) { return bounds.highest[i] - bounds.lowest[i]; };
    velum::linear_space3 const axes{vec3{size(0), 0, 0}, vec3{0, size(1), 0}, vec3{0, 0, size(2)}};
    return {axes, vector_of(bounds.lowest)};
}

velum::uany_map make_pictures(tinyobj::material_t const& from) {
    velum::uany_map pictures;
    auto const add = [&pictures](char const* channel, std::string const& name) {
        if (!name.empty()) {
            pictures[channel] = velum::ustring(name);
        }
    };
    add("diffuse", from.diffuse_texname);
    add("specular", from.specular_texname);
    add("bump", from.bump_texname);
    add("opacity", from.alpha_texname);
    return pictures;
}

velum::any_map make_material(tinyobj::material_t const& from) {
    return {{"name", from.name},
            {"diffuse", vector_of(from.diffuse)},
            {"specular", vector_of(from.specular)},
            {"glow", vector_of(from.emission)},
            {"shininess", from.shininess},
            {"opacity", from.dissolve},
            {"pictures", make_pictures(from)}};
}

velum::uany_map make_shape(mesh const& from, std::size_t position) {
    box bounds;
    bounds.take_in(from);
    velum::uany_map shape{{"name", from.name},
                          {"id", shape_identifier(from.name, position)},
                          {"material", from.material},
                          {"lowest", vector_of(bounds.lowest)},
                          {"highest", vector_of(bounds.highest)},
                          {"has_normals", from.has_normals},
                          {"has_texcoords", from.has_texcoords}};
    // Assigned and not listed above: a list hands out copies, and these are large.
    shape["vertices"] = to_bytes(from.vertices);
    shape["faces"] = to_bytes(from.faces);
    shape["corners"] = to_bytes(from.corners);
    return shape;
}

}  // namespace

velum::any_map make_document(model const& from) {
    box bounds;
    long long vertices = 0;
    long long faces = 0;
    std::vector<velum::uany_map> shapes;
    for (mesh const& mesh : from.meshes) {
        bounds.take_in(mesh);
        vertices += static_cast<long long>(mesh.vertices.size());
        faces += static_cast<long long>(mesh.faces.size());
        shapes.push_back(make_shape(mesh, shapes.size()));
    }
    std::vector<velum::any_map> materials;
    std::ranges::transform(from.materials, std::back_inserter(materials), make_material);

    velum::any_map const counts{{"materials", static_cast<int>(materials.size())},
                                {"shapes", static_cast<int>(shapes.size())},
                                {"vertices", vertices},
                                {"faces", faces}};
    velum::any_map document{{"kind", std::string("scene")},
                            {"version", 1},
                            {"name", from.name},
                            {"counts", counts},
                            {"bounds", transform_to(bounds)}};
    document["materials"] = std::move(materials);
    document["shapes"] = std::move(shapes);
    return document;
}

}  // namespace scene
