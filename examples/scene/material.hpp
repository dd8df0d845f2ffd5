#pragma once

#include <velum/values/any_map.hpp>

#include <tiny_obj_loader.h>

namespace scene {

/// The values of a material, as the document has them.
velum::uany_map make_material(tinyobj::material_t const& from);

}  // namespace scene
