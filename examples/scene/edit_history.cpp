#include "edit_history.hpp"

namespace scene {
namespace {

void do_whole(velum::i_command_t& command) {
    try {
        command.do_it();
    } catch (...) {
        command.undo_it();
        throw;
    }
}

}  // namespace

void edit_history::edit(velum::iptr<velum::i_command_t> const& command) {
    commands_.reserve(done_ + 1);  // so that what is done can be kept
    do_whole(*command);
    commands_.resize(done_);
    commands_.push_back(command);
    ++done_;
}

bool edit_history::undo() {
    if (done_ == 0) {
        return false;
    }
    commands_[done_ - 1]->undo_it();
    --done_;
    return true;
}

bool edit_history::redo() {
    if (done_ == commands_.size()) {
        return false;
    }
    do_whole(*commands_[done_]);
    ++done_;
    return true;
}

}  // namespace scene
