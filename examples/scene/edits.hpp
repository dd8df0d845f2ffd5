#pragma once

#include "i_node.hpp"

#include <velum/command/i_command.hpp>

#include <string>
#include <vector>

namespace scene {

// The edits of a document, as commands: made here, done and undone by whoever keeps them. To undo one that hasn't been
// done changes nothing. Each throws `std::runtime_error` for null in the place of what is to be edited.

using command = velum::iptr<velum::i_command_t>;

command move_node(velum::iptr<i_node_t> const& node, velum::affine_space3 const& to);
command rename_node(velum::iptr<i_node_t> const& node, std::string const& name);

/// `material` is one of those of the document, or null.
command give_material(velum::iptr<i_mesh_t> const& mesh, velum::iptr<velum::i_uany_map_t> const& material);

/// One edit made of several, done in their order.
command make_list(std::vector<command> const& edits);

}  // namespace scene
