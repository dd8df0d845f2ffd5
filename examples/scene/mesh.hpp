#pragma once

#include "i_mesh.hpp"

#include <velum/core/flat.hpp>
#include <velum/core/i_serializable.hpp>

#include <array>
#include <cstdint>

namespace scene {

/// The mesh. Its state is the word 0x00010000, a value map and its material.
class mesh_t : public velum::flat_t<mesh_t, i_mesh_t, velum::i_serializable_t> {
public:
    static velum::iptr<i_mesh_t> create(mesh_data data, velum::iptr<velum::i_uany_map_t> const& material);

    mesh_data const& data() const override { return data_; }
    velum::iptr<velum::i_uany_map_t> const& material() const override { return material_; }
    void set_material(velum::iptr<velum::i_uany_map_t> const& material) override { material_ = material; }

    velum::guid_t clsid() const override;
    void serialize_obj(velum::iptr<velum::i_serializer_t> const&) const override {}
    void serialize(velum::iptr<velum::i_serializer_t> const& s) const override;
    void deserialize(velum::iptr<velum::i_serializer_t> const& s) override;

    /// The record to register the class by.
    static velum::any_map class_info();

private:
    friend velum::object_access;

    mesh_t() = default;

    std::array<velum::answer_t, 3> answers() {
        return {{{velum::iid_unknown, velum::side_of<i_mesh_t>(*this)},
                 {iid_mesh, velum::side_of<i_mesh_t>(*this)},
                 {velum::iid_serializable, velum::side_of<velum::i_serializable_t>(*this)}}};
    }

    mesh_data data_;
    velum::iptr<velum::i_uany_map_t> material_;
    std::int32_t ref_count = 0;
};

}  // namespace scene
