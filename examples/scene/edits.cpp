#include "edits.hpp"

#include "require.hpp"

#include <velum/command/command.hpp>
#include <velum/command/multi_command.hpp>

#include <algorithm>
#include <utility>

namespace scene {
namespace {

template <class Object, class Value>
class change : public velum::command_t {
public:
    using getter = Value const& (Object::*)() const;
    using setter = void (Object::*)(Value const&);

    change(velum::iptr<Object> const& object, getter get, setter set, Value const& value)
        : command_t(nullptr), object_(object), get_(get), set_(set), after_(value) {
        require(static_cast<bool>(object), "an edit needs something to change");
    }

    void do_it() override {
        before_.reserve(before_.size() + 1);  // so that nothing can fail behind the change
        Value before = ((*object_).*get_)();
        ((*object_).*set_)(after_);
        before_.push_back(std::move(before));
    }

    void undo_it() override {
        if (!before_.empty()) {
            ((*object_).*set_)(before_.back());
            before_.pop_back();
        }
    }

private:
    velum::iptr<Object> object_;
    getter get_;
    setter set_;
    Value after_;
    std::vector<Value> before_;  // one for each time that it is done: it may stand twice in a list
};

}  // namespace

command move_node(velum::iptr<i_node_t> const& node, velum::affine_space3 const& to) {
    return new change(node, &i_node_t::transform, &i_node_t::set_transform, to);
}

command rename_node(velum::iptr<i_node_t> const& node, std::string const& name) {
    return new change(node, &i_node_t::name, &i_node_t::set_name, name);
}

command give_material(velum::iptr<i_mesh_t> const& mesh, velum::iptr<velum::i_uany_map_t> const& material) {
    return new change(mesh, &i_mesh_t::material, &i_mesh_t::set_material, material);
}

// A list with a null fails where it stands, when it is done and when it is undone, so it could never be taken back.
command make_list(std::vector<command> const& edits) {
    require(std::ranges::all_of(edits, &command::operator bool), "an edit is null");
    return new velum::multi_command_t(edits);
}

}  // namespace scene
