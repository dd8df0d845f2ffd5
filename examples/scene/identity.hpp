#pragma once

#include <velum/core/interface_ids.hpp>
#include <velum/core/iptr.hpp>
#include <velum/core/unknown.hpp>

namespace scene {

/// What is one and the same for all interfaces of an object; valid as long as somebody holds the object.
template <class Interface>
velum::i_unknown_t const* identity(velum::iptr<Interface> const& object) {
    return velum::iptr<velum::i_unknown_t>(object, velum::iid_unknown).get();
}

}  // namespace scene
