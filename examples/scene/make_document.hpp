#pragma once

#include "model.hpp"

#include <velum/core/i_unknown_map.hpp>

namespace scene {

/// Makes a document, as document.hpp describes it, of a model.
velum::iptr<velum::i_unknown_map_t> make_document(model const& from);

}  // namespace scene
