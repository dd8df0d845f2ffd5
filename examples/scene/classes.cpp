#include "classes.hpp"

#include "mesh.hpp"
#include "node.hpp"

#include <velum/boxed/value_map.hpp>
#include <velum/factory/object_factory.hpp>

namespace scene {

velum::iptr<velum::i_object_factory_t> make_factory() {
    velum::iptr<velum::i_object_factory_t> factory;
    velum::basic_object_factory_t::create(nullptr, velum::iid_object_factory, &factory);
    factory->register_class(velum::uany_map_obj_t::_class_info);
    factory->register_class(mesh_t::class_info());
    factory->register_class(node_t::class_info());
    return factory;
}

}  // namespace scene
