#include "mesh.hpp"

#include "stages.hpp"

#include <velum/wire/read.hpp>
#include <velum/wire/write.hpp>

namespace scene {

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
    material_ = read_reference<velum::i_uany_map_t>(s, "a material");
}

}  // namespace scene
