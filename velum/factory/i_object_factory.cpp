#include <velum/factory/i_object_factory.hpp>

namespace velum {

i_object_factory_t::class_already_registered::class_already_registered()
    : std::runtime_error("object already registered in this factory") {}

i_object_factory_t::class_not_registered::class_not_registered()
    : std::runtime_error("object not registered in this factory") {}

// Defined here, so that there is one type_info of each for all modules to catch by.
i_object_factory_t::class_already_registered::~class_already_registered() = default;
i_object_factory_t::class_not_registered::~class_not_registered() = default;

}  // namespace velum
