#pragma once

#include "../plugin/module.hpp"

#include <velum/factory/i_object_factory.hpp>

namespace scene {

/// A factory that knows all the classes of a scene, and those of `more` unless it is null.
velum::iptr<velum::i_object_factory_t> make_factory(plugin::module const* more);

}  // namespace scene
