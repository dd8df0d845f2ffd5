#include "buffers.hpp"
#include "document.hpp"

#include <algorithm>
#include <stdexcept>
#include <string>

namespace scene {
namespace {

void require(bool held, std::string const& otherwise) {
    if (!held) {
        throw std::runtime_error(otherwise);
    }
}

// With a reference for its type `any_map_get` gives the value itself and no copy, which matters for large ones.
template <class T>
T const& get(velum::any_map const& map, std::string const& key) {
    try {
        return velum::any_map_get<T const&>(map, key);
    } catch (boost::bad_any_cast const&) {
        throw std::runtime_error("wrong type of value under " + key);
    }
}

template <class T>
T const& get(velum::uany_map const& map, std::string const& key) {
    auto const found = map.find(key);
    if (found == map.end()) {
        throw velum::key_not_found(key);
    }
    T const* const value = boost::any_cast<T>(&found->second);
    require(value != nullptr, "wrong type of value under " + key);
    return *value;
}

using vec3 = math::vec<float, 3, math::use_simd_tag>;

void check_material(velum::any_map const& material) {
    get<std::string>(material, "name");
    for (char const* const key : {"diffuse", "specular", "glow"}) {
        get<vec3>(material, key);
    }
    for (char const* const key : {"shininess", "opacity"}) {
        get<float>(material, key);
    }
    auto const& pictures = get<velum::uany_map>(material, "pictures");
    for (auto const& [channel, picture] : pictures) {
        get<velum::ustring>(pictures, channel);
    }
}

struct sizes {
    long long materials = 0;
    long long shapes = 0;
    long long vertices = 0;
    long long faces = 0;
};

void check_shape(velum::uany_map const& shape, sizes& found) {
    get<std::string>(shape, "name");
    get<velum::guid_t>(shape, "id");
    get<vec3>(shape, "lowest");
    get<vec3>(shape, "highest");
    get<bool>(shape, "has_normals");
    get<bool>(shape, "has_texcoords");
    int const material = get<int>(shape, "material");
    require(material >= -1 && material < found.materials, "a shape has a material that isn't there");

    auto const vertices = from_bytes<vertex>(get<velum::byte_vector>(shape, "vertices"));
    auto const faces = from_bytes<std::uint32_t>(get<velum::byte_vector>(shape, "faces"));
    auto const corners = from_bytes<std::uint32_t>(get<velum::byte_vector>(shape, "corners"));
    require(std::ranges::all_of(corners, [&](auto place) { return place < vertices.size(); }),
            "a face has a vertex that isn't there");
    std::uint64_t sum = 0;
    for (std::uint32_t const size : faces) {
        sum += size;
    }
    require(sum == corners.size(), "the faces have more or fewer corners than there are");
    found.vertices += static_cast<long long>(vertices.size());
    found.faces += static_cast<long long>(faces.size());
}

}  // namespace

void check_document(velum::any_map const& document) {
    require(get<std::string>(document, "kind") == "scene", "it is of another kind");
    require(get<int>(document, "version") == 1, "its version isn't known here");
    get<std::string>(document, "name");
    get<velum::affine_space3>(document, "bounds");

    sizes found;
    for (auto const& material : get<std::vector<velum::any_map>>(document, "materials")) {
        check_material(material);
        ++found.materials;
    }
    for (auto const& shape : get<std::vector<velum::uany_map>>(document, "shapes")) {
        check_shape(shape, found);
        ++found.shapes;
    }
    auto const& counts = get<velum::any_map>(document, "counts");
    require(get<int>(counts, "materials") == found.materials && get<int>(counts, "shapes") == found.shapes &&
                get<long long>(counts, "vertices") == found.vertices && get<long long>(counts, "faces") == found.faces,
            "its counts are wrong");
}

}  // namespace scene
