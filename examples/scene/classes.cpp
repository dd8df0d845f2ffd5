#include "classes.hpp"

#include "mesh.hpp"
#include "node.hpp"

#include <velum/boxed/value_map.hpp>
#include <velum/factory/multi_object_factory.hpp>
#include <velum/factory/object_factory.hpp>

#include <set>

namespace scene {
namespace {

using factory = velum::iptr<velum::i_object_factory_t>;

factory new_factory() {
    return velum::make<velum::basic_object_factory_t>().as<velum::i_object_factory_t>();
}

factory own_factory() {
    factory const own = new_factory();
    own->register_class(velum::uany_map_obj_t::_class_info);
    own->register_class(mesh_t::class_info());
    own->register_class(node_t::class_info());
    return own;
}

}  // namespace

// A module registers in a factory of its own, which it can't disturb the others from, and before the two become one,
// since what comes later isn't seen.
factory make_factory(plugin::module const* more) {
    std::set<factory> members{own_factory()};
    if (more != nullptr) {
        factory const others = new_factory();
        more->register_in(*others);
        members.insert(others);
    }
    return velum::make<velum::multi_object_factory_t>(members).as<velum::i_object_factory_t>();
}

}  // namespace scene
