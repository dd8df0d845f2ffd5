#pragma once

#include <velum/factory/i_object_factory.hpp>

namespace scene {

/// A factory that knows all the classes of a scene.
velum::iptr<velum::i_object_factory_t> make_factory();

}  // namespace scene
