#pragma once

#include "library.hpp"
#include "plugin.hpp"

namespace plugin {

/// A module that is loaded for as long as this lives. It must outlive whatever has functions of the module: the
/// factories with its classes, their objects, the values that these gave out, and what they throw.
class module : public library {
public:
    using library::library;

    /// Throws `std::runtime_error` when the module has no `register_classes`.
    void register_in(velum::i_object_factory_t& factory) const {
        reinterpret_cast<decltype(&register_classes)>(find("register_classes"))(factory);
    }
};

}  // namespace plugin
