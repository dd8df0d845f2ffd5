#pragma once

#include "i_node.hpp"

#include <velum/core/flat.hpp>
#include <velum/core/i_serializable.hpp>

#include <array>
#include <cstdint>

namespace scene {

/// The node. Its state is the word 0x00010000, a value map, its mesh, its parent and its children. It leads to all the
/// nodes of its tree, so a tree is stored by its root.
class node_t : public velum::flat_t<node_t, i_node_t, velum::i_serializable_t> {
public:
    static velum::iptr<i_node_t> create(std::string const& name, velum::iptr<i_mesh_t> const& mesh = {});
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

    velum::guid_t clsid() const override;
    void serialize_obj(velum::iptr<velum::i_serializer_t> const&) const override {}
    void serialize(velum::iptr<velum::i_serializer_t> const& s) const override;
    void deserialize(velum::iptr<velum::i_serializer_t> const& s) override;

    /// The record to register the class by.
    static velum::any_map class_info();

private:
    friend velum::object_access;

    node_t() = default;

    std::array<velum::answer_t, 3> answers() {
        return {{{velum::iid_unknown, velum::side_of<i_node_t>(*this)},
                 {iid_node, velum::side_of<i_node_t>(*this)},
                 {velum::iid_serializable, velum::side_of<velum::i_serializable_t>(*this)}}};
    }

    std::string name_;
    velum::affine_space3 transform_{{vec3{1, 0, 0}, vec3{0, 1, 0}, vec3{0, 0, 1}}, vec3{0, 0, 0}};
    velum::iptr<i_mesh_t> mesh_;
    std::vector<velum::iptr<i_node_t>> children_;
    i_node_t* parent_ = nullptr;
    i_node_t const* stored_parent_ = nullptr;
    std::int32_t ref_count = 0;
};

}  // namespace scene
