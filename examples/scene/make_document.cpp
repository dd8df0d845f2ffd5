#include "make_document.hpp"

#include "material.hpp"
#include "mesh.hpp"
#include "model.hpp"
#include "node.hpp"
#include "note.hpp"

#include <velum/boxed/unknown_map.hpp>

#include <string>
#include <vector>

namespace scene {
namespace {

using object_map = velum::iptr<velum::i_unknown_map_t>;

object_map new_map() {
    return velum::make<velum::basic_unknown_map_t>().as<velum::i_unknown_map_t>();
}

velum::affine_space3 transform_to(box const& bounds) {
    auto const size = [&bounds](int i) { return bounds.highest[i] - bounds.lowest[i]; };
    velum::linear_space3 const axes{vec3{size(0), 0, 0}, vec3{0, size(1), 0}, vec3{0, 0, size(2)}};
    return {axes, bounds.lowest};
}

velum::uany_map make_info(model const& from) {
    box bounds;
    long long vertices = 0;
    long long faces = 0;
    int nodes = 1;
    std::string part;
    for (model_mesh const& mesh : from.meshes) {
        bounds.take_in(mesh.data.bounds.lowest);
        bounds.take_in(mesh.data.bounds.highest);
        vertices += static_cast<long long>(mesh.data.vertices.size());
        faces += static_cast<long long>(mesh.data.faces.size());
        nodes += mesh.part == part ? 1 : 2;
        part = mesh.part;
    }
    std::vector<boost::any> names;
    for (auto const& material : from.materials) {
        names.emplace_back(material.name);
    }
    velum::any_map const counts{{"materials", static_cast<int>(from.materials.size())},
                                {"meshes", static_cast<int>(from.meshes.size())},
                                {"nodes", nodes},
                                {"vertices", vertices},
                                {"faces", faces}};
    return {{"kind", std::string("scene")},   {"version", 2},      {"name", from.name}, {"counts", counts},
            {"bounds", transform_to(bounds)}, {"materials", names}};
}

velum::iptr<i_node_t> make_tree(model const& from, object_map const& materials) {
    auto const root = velum::make<node_t>(from.name).as<i_node_t>();
    velum::iptr<i_node_t> part;
    for (model_mesh const& mesh : from.meshes) {
        if (!part || part->name() != mesh.part) {
            part = velum::make<node_t>(mesh.part).as<i_node_t>();
            root->add(part);
        }
        auto const material = materials->get(mesh.material).try_as<velum::i_uany_map_t>();
        auto const faces = velum::make<mesh_t>(mesh.data, material).as<i_mesh_t>();
        part->add(velum::make<node_t>(mesh.data.name, faces).as<i_node_t>());
    }
    return root;
}

}  // namespace

object_map make_document(model const& from, velum::iptr<velum::i_object_factory_t> const& factory) {
    auto const materials = new_map();
    for (auto const& material : from.materials) {
        materials->set(material.name, velum::uany_map_obj_t::create(make_material(material)).get());
    }
    auto const document = new_map();
    document->set("info", velum::uany_map_obj_t::create(make_info(from)).get());
    document->set("materials", materials.get());
    if (auto const note = make_note(factory, "made of the model " + from.name)) {
        document->set("note", note);
    }
    document->set("root", make_tree(from, materials).get());
    return document;
}

}  // namespace scene
