#pragma once

#include "i_mesh.hpp"

#include <velum/core/implements.hpp>

#include <utility>

namespace scene {

/// The mesh. Its state is the word 0x00010000, a value map and its material.
class mesh_t : public velum::implements<mesh_t, i_mesh_t, velum::i_serializable_t> {
public:
    static constexpr velum::guid_t class_id{"{D6F1C775-EA9A-4D87-8257-8E611C3FAE43}"};
    static constexpr char const* class_name = "mesh";

    mesh_t() = default;
    mesh_t(mesh_data data, velum::iptr<velum::i_uany_map_t> const& material)
        : data_(std::move(data)), material_(material) {}

    mesh_data const& data() const override { return data_; }
    velum::iptr<velum::i_uany_map_t> const& material() const override { return material_; }
    void set_material(velum::iptr<velum::i_uany_map_t> const& material) override { material_ = material; }

    void serialize(velum::iptr<velum::i_serializer_t> const& s) const override;
    void deserialize(velum::iptr<velum::i_serializer_t> const& s) override;

private:
    mesh_data data_;
    velum::iptr<velum::i_uany_map_t> material_;
};

}  // namespace scene
