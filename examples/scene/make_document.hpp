#pragma once

#include "model.hpp"

#include <velum/core/i_unknown_map.hpp>
#include <velum/factory/i_object_factory.hpp>

namespace scene {

/// Makes a document, as document.hpp describes it, of a model; with a note if `factory` has a class for it.
velum::iptr<velum::i_unknown_map_t> make_document(model const& from,
                                                  velum::iptr<velum::i_object_factory_t> const& factory);

}  // namespace scene
