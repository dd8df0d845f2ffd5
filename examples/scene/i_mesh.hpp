#pragma once

#include "mesh_data.hpp"

#include <velum/boxed/value_map.hpp>

namespace scene {

/// Faces and what they are made of.
class i_mesh_t : public velum::i_unknown_t {
public:
    virtual mesh_data const& data() const = 0;

    /// A value map that other meshes may share, or null.
    virtual velum::iptr<velum::i_uany_map_t> const& material() const = 0;
    virtual void set_material(velum::iptr<velum::i_uany_map_t> const& material) = 0;
};

}  // namespace scene

template <>
inline constexpr velum::guid_t velum::iid_of<scene::i_mesh_t>{"{72D90348-3F75-44F7-AF4D-0BF435E4F4EB}"};
