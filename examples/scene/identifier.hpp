#pragma once

#include <velum/core/guid.hpp>

#include <cstddef>
#include <string>

namespace scene {

/// The identifier of the mesh `name` at `position` in the list of meshes: always the same for the same two.
///
/// Its first half is the 64-bit FNV-1a hash of the name, a '#' and the position in decimal digits; its second half is
/// what the hash comes to when it goes on over the same text once more.
velum::guid_t mesh_identifier(std::string const& name, std::size_t position);

}  // namespace scene
