#pragma once

#include "i_node.hpp"

#include <velum/core/implements.hpp>

namespace scene {

/// The node. Its state is the word 0x00010000, a value map, its mesh, its parent and its children. It leads to all the
/// nodes of its tree, so a tree is stored by its root.
class node_t : public velum::implements<node_t, i_node_t, velum::i_serializable_t> {
public:
    static constexpr velum::guid_t class_id{"{10B1C1D0-D781-4D73-B78E-FA3E034AB89B}"};
    static constexpr char const* class_name = "node";

    explicit node_t(std::string const& name = {}, velum::iptr<i_mesh_t> const& mesh = {}) : name_(name), mesh_(mesh) {}
    ~node_t() override;

    std::string const& name() const override { return name_; }
    void set_name(std::string const& name) override { name_ = name; }
    velum::affine_space3 const& transform() const override { return transform_; }
    void set_transform(velum::affine_space3 const& transform) override { transform_ = transform; }
    velum::iptr<i_mesh_t> const& mesh() const override { return mesh_; }
    std::vector<velum::iptr<i_node_t>> const& children() const override { return children_; }
    i_node_t* parent() const override { return parent_; }
    i_node_t const* stored_parent() const override { return stored_parent_; }
    void add(velum::iptr<i_node_t> const& child) override;
    void set_parent(i_node_t* parent) override { parent_ = parent; }

    void serialize(velum::iptr<velum::i_serializer_t> const& s) const override;
    void deserialize(velum::iptr<velum::i_serializer_t> const& s) override;

private:
    std::string name_;
    velum::affine_space3 transform_{{vec3{1, 0, 0}, vec3{0, 1, 0}, vec3{0, 0, 1}}, vec3{0, 0, 0}};
    velum::iptr<i_mesh_t> mesh_;
    std::vector<velum::iptr<i_node_t>> children_;
    i_node_t* parent_ = nullptr;
    i_node_t const* stored_parent_ = nullptr;
};

}  // namespace scene
