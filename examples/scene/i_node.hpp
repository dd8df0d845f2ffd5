#pragma once

#include "i_mesh.hpp"

#include <velum/values/catalogue.hpp>

#include <string>
#include <vector>

namespace scene {

/// A place in the tree of a scene. A node owns its children; to its parent it only points.
class i_node_t : public velum::i_unknown_t {
public:
    virtual std::string const& name() const = 0;
    virtual void set_name(std::string const& name) = 0;

    /// From the node to its parent.
    virtual velum::affine_space3 const& transform() const = 0;
    virtual void set_transform(velum::affine_space3 const& transform) = 0;

    /// May be null.
    virtual velum::iptr<i_mesh_t> const& mesh() const = 0;

    virtual std::vector<velum::iptr<i_node_t>> const& children() const = 0;

    /// The node that has this one among its children, or null.
    virtual i_node_t* parent() const = 0;

    /// The parent with which the node was stored, null for none and for a new node. Nothing keeps it alive, so it is
    /// there to be compared only.
    virtual i_node_t const* stored_parent() const = 0;

    /// Takes a node for its last child. Throws `std::runtime_error` for null, for a node that has a parent, and for
    /// this node and those above it.
    virtual void add(velum::iptr<i_node_t> const& child) = 0;

    /// For the parent alone, which sets itself when it takes the node, and null when it goes.
    virtual void set_parent(i_node_t* parent) = 0;
};

/// The plain values of a node as they are stored: name, transform and the number of its children (int).
velum::any_map values_of(i_node_t const& node);

}  // namespace scene

template <>
inline constexpr velum::guid_t velum::iid_of<scene::i_node_t>{"{9A8FB463-A0AD-45A4-8C0E-FD55C4E0A3CB}"};
