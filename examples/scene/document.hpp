#pragma once

#include "model.hpp"

#include <velum/values/any_map.hpp>

namespace scene {

/// The scene as a document of value maps:
///
///     kind        string           "scene": a stored map doesn't say on its own what it is
///     version     int              1
///     name        string
///     counts      any_map          materials, shapes: int; vertices, faces: long long
///     bounds      affine_space3    takes the cube from (0 0 0) to (1 1 1) to the box around all vertices
///     materials   vector<any_map>
///         name                        string
///         diffuse, specular, glow     float vector of 3
///         shininess, opacity          float
///         pictures                    uany_map: a ustring under the channel's name, for each channel that has one
///     shapes      vector<uany_map>
///         name                        string
///         id                          guid_t, see `shape_identifier`
///         material                    int, a place in `materials`, or -1
///         lowest, highest             float vectors of 3: the corners of the box around it
///         has_normals, has_texcoords  bool
///         vertices                    byte_vector of `vertex`
///         faces                       byte_vector of 32-bit numbers: how many corners each face has
///         corners                     byte_vector of 32-bit numbers: places in `vertices`, face after face
///
/// There may be thousands of shapes, all with the same few keys, so their maps have interned ones. Materials are looked
/// at by people and other programs, so theirs are in alphabetical order.
velum::any_map make_document(model const& from);

/// Throws `std::runtime_error`, `velum::key_not_found` among them, unless `document` is a scene as above: every key
/// there with its type, every count right, and every place within what it points into.
void check_document(velum::any_map const& document);

}  // namespace scene
