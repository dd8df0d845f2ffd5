#include "model_builder.hpp"

#include "identifier.hpp"

#include <boost/container_hash/hash.hpp>

#include <algorithm>
#include <cstddef>
#include <stdexcept>
#include <unordered_map>
#include <utility>

namespace scene {
namespace {

char const* const unnamed = "default";

int from_zero(int index, std::size_t count) {
    if (index > 0) {
        return index - 1;
    }
    long long const place = static_cast<long long>(count) + index;
    if (place < 0) {
        throw std::runtime_error("a face counts back beyond the first vertex");
    }
    return index == 0 ? -1 : static_cast<int>(place);
}

template <class T>
T const& element(std::vector<T> const& elements, int place, char const* kind) {
    if (place < 0 || static_cast<std::size_t>(place) >= elements.size()) {
        throw std::runtime_error("a face refers to " + std::string(kind) + ' ' + std::to_string(place + 1LL) + " of " +
                                 std::to_string(elements.size()));
    }
    return elements[static_cast<std::size_t>(place)];
}

}  // namespace

void model_builder::enter_object(std::string const& name) {
    object_ = name;
    group_.clear();
    current_ = nullptr;
}

void model_builder::enter_group(std::string const& name) {
    group_ = name;
    current_ = nullptr;
}

void model_builder::use_material(std::string const& name) {
    material_ = name;
    current_ = nullptr;
}

void model_builder::add_face(tinyobj::index_t const* corners, int count) {
    if (count < 3) {
        result.notes.insert("faces of fewer than three corners are left out");
        return;
    }
    if (current_ == nullptr) {
        current_ = &outlines_[{object_, group_, material_}];
    }
    current_->faces.push_back(static_cast<std::uint32_t>(count));
    std::for_each(corners, corners + count, [this](tinyobj::index_t const& at) {
        current_->corners.push_back({from_zero(at.vertex_index, positions_.size()),
                                     from_zero(at.texcoord_index, texcoords_.size()),
                                     from_zero(at.normal_index, normals_.size())});
    });
}

void model_builder::finish() {
    for (auto const& [names, from] : outlines_) {
        auto const& [object, group, material] = names;
        std::string name = object;
        name.append(object.empty() || group.empty() ? "" : "/").append(group);
        std::string const& part = object.empty() ? group : object;
        mesh_data made = make_mesh(from);
        made.name = name.empty() ? unnamed : name;
        made.id = mesh_identifier(made.name, result.meshes.size());
        result.meshes.push_back({part.empty() ? unnamed : part, known_material(material), std::move(made)});
    }
}

mesh_data model_builder::make_mesh(outline const& from) const {
    mesh_data made;
    made.faces = from.faces;
    auto const hash = [](corner const& at) { return boost::hash_range(at.begin(), at.end()); };
    std::unordered_map<corner, std::uint32_t, decltype(hash)> places(from.corners.size(), hash);
    for (corner const& at : from.corners) {
        auto const [place, is_new] = places.emplace(at, static_cast<std::uint32_t>(made.vertices.size()));
        if (is_new) {
            auto const& [x, y, z] = made.vertices.emplace_back(make_vertex(at)).position;
            made.bounds.take_in({x, y, z});
            made.has_texcoords = made.has_texcoords && at[1] >= 0;
            made.has_normals = made.has_normals && at[2] >= 0;
        }
        made.corners.push_back(place->second);
    }
    return made;
}

vertex model_builder::make_vertex(corner const& at) const {
    vertex made{element(positions_, at[0], "vertex"), {}, {}};
    if (at[1] >= 0) {
        made.texcoord = element(texcoords_, at[1], "texture coordinate");
    }
    if (at[2] >= 0) {
        made.normal = element(normals_, at[2], "normal");
    }
    return made;
}

std::string model_builder::known_material(std::string const& name) {
    if (name.empty() || std::ranges::count(result.materials, name, &tinyobj::material_t::name) != 0) {
        return name;
    }
    result.notes.insert("there is no material " + name);
    return {};
}

}  // namespace scene
