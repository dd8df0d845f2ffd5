#include "node.hpp"

#include "lookup.hpp"
#include "require.hpp"
#include "stages.hpp"

#include <velum/wire/read.hpp>
#include <velum/wire/write.hpp>

namespace scene {

// Somebody else may keep a child.
node_t::~node_t() {
    for (auto const& child : children_) {
        child->set_parent(nullptr);
    }
}

void node_t::add(velum::iptr<i_node_t> const& child) {
    require(child && child->parent() == nullptr, "a node can only take one that has no parent");
    for (i_node_t const* above = this; above != nullptr; above = above->parent()) {
        require(above != child.get(), "a node can't be below itself");
    }
    children_.push_back(child);
    child->set_parent(this);
}

velum::any_map values_of(i_node_t const& node) {
    return {
        {"name", node.name()}, {"transform", node.transform()}, {"children", static_cast<int>(node.children().size())}};
}

void node_t::serialize(velum::iptr<velum::i_serializer_t> const& s) const {
    write_version(s);
    velum::serialize(values_of(*this), s);
    write_reference(s, mesh_);
    write_reference(s, velum::iptr<i_node_t>(parent_));
    for (auto const& child : children_) {
        write_reference(s, child);
    }
}

void node_t::deserialize(velum::iptr<velum::i_serializer_t> const& s) {
    read_version(s);
    velum::any_map values;
    velum::deserialize(values, s);
    name_ = lookup<std::string>(values, "name");
    transform_ = lookup<velum::affine_space3>(values, "transform");
    mesh_ = read_reference<i_mesh_t>(s, "a mesh");
    auto const parent = read_reference<i_node_t>(s, "a parent");
    int const count = lookup<int>(values, "children");
    require(count >= 0, "a number of children is below zero");
    for (int i = 0; i < count; ++i) {
        auto const child = read_reference<i_node_t>(s, "a child");
        require(static_cast<bool>(child), "a child is null");
        require(child->stored_parent() == this, "a child was stored with another parent");
        add(child);
    }
    // Only now, so that no node can take one that is still being read, which may be above it.
    stored_parent_ = parent.get();
}

}  // namespace scene
