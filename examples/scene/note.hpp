#pragma once

#include <velum/factory/i_object_factory.hpp>

#include <string>

namespace scene {

/// A note with `text` of the class that `factory` has under the name "note", whatever it is; null without one.
velum::iptr<velum::i_unknown_t> make_note(velum::iptr<velum::i_object_factory_t> const& factory,
                                          std::string const& text);

}  // namespace scene
