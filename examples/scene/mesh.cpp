#include "mesh.hpp"

#include "stages.hpp"

#include <velum/core/class_record.hpp>
#include <velum/wire/read.hpp>
#include <velum/wire/write.hpp>

#include <set>
#include <utility>

namespace scene {
namespace {

velum::guid_t const clsid_mesh("{D6F1C775-EA9A-4D87-8257-8E611C3FAE43}");

}  // namespace

velum::iptr<i_mesh_t> mesh_t::create(mesh_data data, velum::iptr<velum::i_uany_map_t> const& material) {
    velum::iptr<mesh_t> const mesh(new mesh_t);
    mesh->data_ = std::move(data);
    mesh->material_ = material;
    return mesh.get();
}

velum::guid_t mesh_t::clsid() const {
    return clsid_mesh;
}

void mesh_t::serialize(velum::iptr<velum::i_serializer_t> const& s) const {
    write_version(s);
    velum::serialize(values_of(data_), s);
    write_reference(s, material_);
}

void mesh_t::deserialize(velum::iptr<velum::i_serializer_t> const& s) {
    read_version(s);
    velum::any_map values;
    velum::deserialize(values, s);
    data_ = mesh_data_of(values);
    material_ = read_reference<velum::i_uany_map_t>(s, velum::iid_uany_map, "a material");
}

velum::any_map mesh_t::class_info() {
    return {{"clsid", clsid_mesh},
            {"class_name", std::string("mesh")},
            {"create_function", velum::create_function_t(&mesh_t::create_function)},
            {"deserialize_function", velum::deserialize_function_t(&mesh_t::deserialize_function)},
            {"supported_interfaces", std::set{velum::iid_unknown, iid_mesh, velum::iid_serializable}}};
}

}  // namespace scene
