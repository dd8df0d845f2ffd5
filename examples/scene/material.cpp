#include "material.hpp"

#include "bounds.hpp"

#include <string>

namespace scene {
namespace {

vec3 vector_of(float const (&components)[3]) {
    return {components[0], components[1], components[2]};
}

velum::any_map make_pictures(tinyobj::material_t const& from) {
    velum::any_map pictures;
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

}  // namespace

velum::uany_map make_material(tinyobj::material_t const& from) {
    return {{"name", from.name},
            {"diffuse", vector_of(from.diffuse)},
            {"specular", vector_of(from.specular)},
            {"glow", vector_of(from.emission)},
            {"shininess", from.shininess},
            {"opacity", from.dissolve},
            {"pictures", make_pictures(from)}};
}

}  // namespace scene
